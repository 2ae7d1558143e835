#pragma once

class QTcpSocket;

/// Lets the system probe a connection that is silent, so that a peer that has lost its power or its
/// cable counts as disconnected within 30 s.
void keepAlive(QTcpSocket *socket);
