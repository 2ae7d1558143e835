/// Starts like the console.

#include "bench/speed/firstpaint.h"

#include "app/appearance.h"
#include "app/mainwindow.h"

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    prepareAppearance();
    MainWindow window;
    return FirstPaint::showUntilPainted(&window);
}
