#pragma once

class QTcpSocket;

/// Makes the system probe a silent connection, so that a peer that has lost its power or its cable
/// counts as disconnected within 30 s.
void keepAlive(QTcpSocket *socket);
