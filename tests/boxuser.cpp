#include "boxuser.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QTest>
#include <QTimer>

BoxUser::BoxUser(const Action &action)
{
    then(action);
    QTimer::singleShot(0, this, SLOT(look()));
}

BoxUser::~BoxUser()
{
    if (!actions.isEmpty())
        QTest::qFail("A modal box has not been opened.", __FILE__, __LINE__);
}

BoxUser::Action BoxUser::choose(const QString &path)
{
    return [path](QWidget *box) {
        auto *files = qobject_cast<QFileDialog *>(box);
        QVERIFY(files);
        files->selectFile(path);
        static_cast<QDialog *>(files)->accept();
    };
}

BoxUser::Action BoxUser::press(const QString &buttonText)
{
    return [buttonText](QWidget *box) {
        for (QAbstractButton *button : box->findChildren<QAbstractButton *>()) {
            if (button->text().remove('&') == buttonText) {
                button->click();
                return;
            }
        }
        QFAIL(qPrintable("no button " + buttonText));
    };
}

void BoxUser::look()
{
    // Once more before the action, which may itself open a box and wait for it.
    QTimer::singleShot(1, this, SLOT(look()));
    const QPointer<QWidget> box = QApplication::activeModalWidget();
    if (!box || box == current || actions.isEmpty())
        return;
    current = box;
    actions.dequeue()(box);
    if (box && box->isVisible())
        box->close();
}
