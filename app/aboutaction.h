#pragma once

#include <QAction>

/// The window's F1 key: shows what the program is, and its version.
class AboutAction : public QAction
{
    Q_OBJECT

public:
    explicit AboutAction(QWidget *window);

private slots:
    void showAbout();

private:
    QWidget *window;
};
