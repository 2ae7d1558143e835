#pragma once

#include <QAction>

/// Tells what the program is and in which version: F1 in the window.
class AboutAction : public QAction
{
    Q_OBJECT

public:
    explicit AboutAction(QWidget *window);

private slots:
    void tell();

private:
    QWidget *window;
};
