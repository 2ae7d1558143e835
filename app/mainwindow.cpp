#include "app/mainwindow.h"

#include "app/aboutaction.h"
#include "app/imglabel.h"
#include "app/logview.h"
#include "app/watchserver.h"
#include "link/cmdclient.h"
#include "widgets/textlog.h"
#include "widgets/controls.h"
#include "widgets/placement.h"
#include "widgets/screenfit.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QGroupBox>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace {

constexpr QSize LogSize(320, 200);
constexpr int LeastLogHeight = 110; // the column beside it needs no less
constexpr QSize PixmapSize(480, 640);

LogView *createLog(const char *name)
{
    auto *log = controls::sized(new LogView, LogSize);
    log->setObjectName(QLatin1String(name));
    return log;
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent),
      rgbFrameBuffer(wire::FrameSize),
      irFrameBuffer(wire::FrameSize),
      rgbPixmap(PixmapSize),
      irPixmap(PixmapSize),
      infoText(createLog("infoText")),
      watchText(createLog("watchText"))
{
    setWindowTitle(tr("Quirel"));
    createLayout();
    auto *fit = new ScreenFit(this);
    fit->letShrink(infoText, LeastLogHeight);
    fit->letShrink(watchText, LeastLogHeight);

    watchServer = new WatchServer(watchText, this);
    client = new CmdClient(infoText, this);
    enableConnection(false);

    updateTimer = new QTimer(this);
    connect(updateTimer, SIGNAL(timeout()), this, SLOT(update_task()));
}

void MainWindow::createLayout()
{
    QGroupBox *video = createVideoPanel();
    QGroupBox *videoControl = createVideoControlGroup();
    QGroupBox *users = createUserGroup();
    QGroupBox *listener = createListenerGroup();
    QGroupBox *hint = createHintGroup();
    QGroupBox *settings = createSettingsGroup();
    QGroupBox *connection = createConnectionGroup();
    connectionGroups = {videoControl, users, settings, listener};

    auto *controlRow = new QHBoxLayout;
    controlRow->addWidget(videoControl);
    controlRow->addStretch();
    controlRow->addWidget(users);

    auto *left = new QVBoxLayout;
    left->addWidget(video, 1);
    left->addLayout(controlRow);

    auto *right = new QVBoxLayout;
    right->addWidget(listener);
    for (QGroupBox *group : {hint, settings, connection}) {
        right->addStretch();
        right->addWidget(group);
    }

    auto *central = new QWidget;
    auto *columns = new QHBoxLayout(central);
    columns->addLayout(left);
    columns->addStretch();
    columns->addLayout(right);
    central->addAction(new AboutAction(this));
    setCentralWidget(central);
    setFixedSize(sizeHint());

    createTabOrder({connection, videoControl, video, users, settings, listener, hint});
}

/// From where work begins, the connection, through the controls to the logs.
void MainWindow::createTabOrder(const QList<QGroupBox *> &groups)
{
    QWidget *previous = nullptr;
    for (QGroupBox *group : groups) {
        const auto widgets = group->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (QWidget *widget : widgets) {
            if (!(widget->focusPolicy() & Qt::TabFocus))
                continue;
            setTabOrder(previous, widget);
            previous = widget;
        }
    }
    openBtn->setFocus();
}

QGridLayout *MainWindow::createButtonGrid(std::initializer_list<GridButton> buttons, int columns,
                                          QSize buttonSize)
{
    auto *grid = new QGridLayout;
    int cell = 0;
    for (const GridButton &row : buttons) {
        QPushButton *button = controls::button(tr(row.text), buttonSize, this, row.slot);
        if (row.member)
            this->*row.member = button;
        grid->addWidget(button, cell / columns, cell % columns);
        ++cell;
    }
    return grid;
}

QGroupBox *MainWindow::createHintGroup()
{
    auto *group = new QGroupBox(tr("Hint"));
    infoText->setAccessibleName(group->title());
    addLogWithClear(new QVBoxLayout(group), infoText, SLOT(clearInfoTextBtnClickAct()));
    return group;
}

void MainWindow::addLogWithClear(QBoxLayout *layout, QTextEdit *log, const char *clearSlot)
{
    layout->addWidget(log);
    auto *clearBtn = controls::button(tr("Clear"), QSize(), this, clearSlot);
    layout->addWidget(clearBtn, 0, Qt::AlignRight);
}

bool MainWindow::event(QEvent *event)
{
    // A modal dialog is about to be shown, and its size is settled.
    if (event->type() == QEvent::WindowBlocked && QApplication::activeModalWidget())
        placeDialog(QApplication::activeModalWidget());
    return QMainWindow::event(event);
}

void MainWindow::placeDialog(QWidget *dialog) const
{
    const auto shownPart = [](const QWidget *widget) {
        return widget->visibleRegion().boundingRect().translated(widget->mapToGlobal({}));
    };
    const QWidget *pictures = rgbImgLabel->parentWidget();
    // The frame that this window has is the best guess of the dialog's.
    const QRect place = placement::overPictures(
        dialog->size() + frameSize() - size(), {pictures->mapToGlobal({}), pictures->size()},
        shownPart(infoText), shownPart(watchText), screen()->availableGeometry());
    dialog->move(place.topLeft() + geometry().topLeft() - pos());
}

void MainWindow::clearInfoTextBtnClickAct()
{
    infoText->clear();
}

void MainWindow::log(const QString &line)
{
    textlog::append(infoText, line);
}

void MainWindow::notSupported()
{
    log(tr("Not supported for now."));
}
