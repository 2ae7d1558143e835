/// A minimal program with a window of the console's size.

#include "bench/speed/firstpaint.h"

#include <QLabel>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setCentralWidget(new QLabel(QStringLiteral("Quirel")));
    window.setFixedSize(1334, 885);
    return FirstPaint::showUntilPainted(&window);
}
