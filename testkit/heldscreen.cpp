#include <QGuiApplication>

namespace {

/// The screen of Qt's offscreen platform, which no program with a QApplication ever frees: whatever
/// a test loses is reported as a leak, this is not lost.
QScreen *volatile heldScreen = nullptr;

void holdScreen()
{
    heldScreen = QGuiApplication::primaryScreen();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(holdScreen)
