#pragma once

#include "link/cmdclient.h"

class QTextEdit;

/// A client whose requests are all answered with the same prepared bytes. Its peer is in the same
/// thread, and a wait ends as soon as all bytes have arrived.
class ReplayClient : public CmdClient
{
    Q_OBJECT

public:
    /// Clears a log that the caller owns, and writes to it.
    explicit ReplayClient(QTextEdit *log);

    void setReply(const QByteArray &bytes);
    /// Returns the last request that was answered.
    QByteArray lastRequest() const;

private:
    class Host;

    explicit ReplayClient(Host *host);

    Host *host; ///< owned by CmdClient
};
