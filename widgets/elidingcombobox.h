#pragma once

#include <QComboBox>

/// A combo box too narrow for some of its items: it shows these cut with an ellipsis, and whole in
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
