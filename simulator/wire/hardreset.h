#pragma once

class QAbstractSocket;

namespace sim {

/// Ends a connection so that the peer sees a reset instead of an orderly end.
void resetConnection(QAbstractSocket &socket);

} // namespace sim
