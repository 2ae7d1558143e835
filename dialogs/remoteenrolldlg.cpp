#include "dialogs/remoteenrolldlg.h"

#include "data/frames.h"
#include "data/wholefile.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QCoreApplication>

namespace {

constexpr QSize DialogSize(300, 100);
constexpr QSize ButtonSize(120, 30);

constexpr quint32 EnrollmentUserId = 255;
constexpr int ImageCount = 5;
// A second copy of a picture would be taken for the next picture.
constexpr int SettleTime = 50; // ms

} // namespace

RemoteEnrollDlg::RemoteEnrollDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : DeviceDialog(cmdClient, log, parent),
      userId(EnrollmentUserId)
{
    setWindowTitle(tr("Remote Features Enroll"));
    setFixedSize(DialogSize);
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(
        controls::button(tr("start enroll"), ButtonSize, this, SLOT(startBtnClickAct())));
    row->addStretch(1);
    row->addWidget(controls::button(tr("load data"), ButtonSize, this, SLOT(readBtnClickAct())));
    row->addStretch(1);
    auto *layout = new QVBoxLayout(this);
    layout->addStretch(1);
    layout->addLayout(row);
    layout->addStretch(1);
}

void RemoteEnrollDlg::startBtnClickAct()
{
    if (client->startRemoteEnroll(userId))
        log(tr("Remote enrollment has been started, please follow the instructions of the device "
               "to complete the enroll operation"));
}

void RemoteEnrollDlg::readBtnClickAct()
{
    isReachable = true;
    std::vector<uint8_t> buffer(2 * wire::FrameSize);
    for (int index = 0; index < ImageCount; ++index) {
        if (!readImage(index, &buffer))
            return;
    }
    readFeatures(&buffer);
}

void RemoteEnrollDlg::resynchronize()
{
    if (isReachable)
        isReachable = client->resynchronize(SettleTime) && client->hasConnection();
}

bool RemoteEnrollDlg::readImage(int index, std::vector<uint8_t> *pair)
{
    resynchronize();
    if (!client->getRemoteEnrollImages(pair->data(), pair->size(), userId,
                                       static_cast<uint8_t>(index)))
        return true;
    log(tr("read the %1th image").arg(index + 1));
    const QString path = QCoreApplication::applicationDirPath() +
                         QStringLiteral("/remote/remote_img%1.raw").arg(index + 1);
    if (!writeWholeFile(path, sideBySide(pair->data(), pair->data() + wire::FrameSize))) {
        log(tr("Fail to save the image."));
        return false;
    }
    log(tr("Firmware saved：%1").arg(path));
    return true;
}

void RemoteEnrollDlg::readFeatures(std::vector<uint8_t> *buffer)
{
    resynchronize();
    if (!client->getRemoteFeatures(buffer->data(), buffer->size(), userId))
        return;
    log(tr("Features loaded."));
    const QString path =
        QCoreApplication::applicationDirPath() + QStringLiteral("/remote/remote_feat.bin");
    const QByteArray features(reinterpret_cast<const char *>(buffer->data()), wire::FeatureSize);
    log(writeWholeFile(path, features) ? tr("Features saved：%1").arg(path)
                                       : tr("Fail to save the features."));
}
