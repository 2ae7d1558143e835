#include "app/mainwindow.h"

#include "app/aboutaction.h"
#include "app/imglabel.h"
#include "app/logview.h"
#include "app/watchserver.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"
#include "widgets/placement.h"
#include "widgets/screenfit.h"
#include "widgets/textlog.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QGroupBox>
#include <QScreen>

namespace {

constexpr QSize LogSize(320, 200);
constexpr int MinLogHeight = 110; // with it this column is as high as the one beside it

LogView *createLog(const char *name)
{
    return controls::field(new LogView, name, LogSize);
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent),
      infoText(createLog("infoText")),
      watchText(createLog("watchText")),
      watchServer(new WatchServer(watchText, this)),
      client(new CmdClient(infoText, this)),
      preview(client, infoText, this)
{
    setWindowTitle(tr("Quirel"));
    createLayout();
    preview.setButtons(this);
    enableConnection(false);
    auto *fit = new ScreenFit(this);
    fit->letShrink(infoText, MinLogHeight);
    fit->letShrink(watchText, MinLogHeight);
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

/// The tab order begins with the connection, where work begins, and ends with the logs.
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
    // This window gets the event when a modal dialog is about to open, with its final size.
    if (event->type() == QEvent::WindowBlocked && QApplication::activeModalWidget())
        placeDialog(QApplication::activeModalWidget());
    return QMainWindow::event(event);
}

void MainWindow::placeDialog(QWidget *dialog) const
{
    const auto shownPart = [](const QWidget *widget) {
        return widget->visibleRegion().boundingRect().translated(widget->mapToGlobal({}));
    };
    const QWidget *pictures = preview.palmprint.label()->parentWidget();
    // The dialog's frame is not known yet; it is taken to be that of this window.
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
