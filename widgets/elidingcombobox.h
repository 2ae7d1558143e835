#pragma once

#include <QComboBox>

/// A combo box that is too narrow for some of its items. It elides them, and shows them in full in
/// its list and its tooltip.
class ElidingComboBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    void showPopup() override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
