#include "app/appearance.h"

#include <QApplication>
#include <QFont>
#include <QIcon>

namespace {

constexpr int FontPixels = 11;
constexpr int IconSizes[] = {16, 24, 32, 48, 64, 128, 256};

} // namespace

// The macro wants the global namespace.
static void initResources()
{
    Q_INIT_RESOURCE(quirel);
}

void prepareScaling()
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // On Windows 150 % is a wish. An X server may tell 100 dots per inch that nobody has chosen;
    // what lies between two sizes takes the one that the screen has room for.
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
