#include "app/appearance.h"

#include <QApplication>
#include <QFont>
#include <QIcon>

namespace {

constexpr int FontPixels = 11;
constexpr int IconSizes[] = {16, 24, 32, 48, 64, 128, 256};

} // namespace

// The macro must be used in the global namespace.
static void initResources()
{
    Q_INIT_RESOURCE(quirel);
}

void prepareScaling()
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // On Windows a scale such as 150 % is the user's choice. An X server may report a resolution
    // that nobody has chosen, so such scales are rounded there, preferably down.
#ifdef Q_OS_WIN
    constexpr auto Policy = Qt::HighDpiScaleFactorRoundingPolicy::PassThrough;
#else
    constexpr auto Policy = Qt::HighDpiScaleFactorRoundingPolicy::RoundPreferFloor;
#endif
    QApplication::setHighDpiScaleFactorRoundingPolicy(Policy);
}

void prepareAppearance()
{
    QFont font = QApplication::font();
    font.setPixelSize(FontPixels);
    QApplication::setFont(font);

    initResources();
    QIcon icon;
    for (const int size : IconSizes)
        icon.addFile(QStringLiteral(":/icons/quirel-%1.png").arg(size), QSize(size, size));
    QApplication::setWindowIcon(icon);
}
