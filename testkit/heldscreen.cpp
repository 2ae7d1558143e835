#include <QGuiApplication>

namespace {

/// Keeps the screen of Qt's offscreen platform reachable. Qt never frees it, and the leak sanitizer
/// would report it in every program.
QScreen *volatile heldScreen = nullptr;

void holdScreen()
{
    heldScreen = QGuiApplication::primaryScreen();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(holdScreen)
