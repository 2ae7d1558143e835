#pragma once

#include "link/cmdclient.h"

class QTextEdit;

/// A client whose every request is answered with the same prepared bytes. It is connected to a
/// peer in the same thread, so that no time passes: a wait ends as soon as all bytes have arrived.
class ReplayClient : public CmdClient
{
    Q_OBJECT

public:
    /// The log is borrowed.
    explicit ReplayClient(QTextEdit *log);

    void setReply(const QByteArray &bytes);
    /// The last request that was answered.
    QByteArray lastRequest() const;

private:
    class Host;

    explicit ReplayClient(Host *host);

    Host *host; ///< owned by CmdClient
};
