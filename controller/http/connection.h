#pragma once

namespace lamp::controller {

/// Breaks the connection whose client has this port, without another byte: the web library has no
/// way to leave a request unanswered. Does nothing when there is no such connection.
void breakConnection(int clientPort);

/// Ends the connection whose client has this port after what was written to it, and drops what it
/// sent and nobody read.
void endConnection(int clientPort);

/// True while that client still waits.
bool clientWaits(int clientPort);

/// Hears nobody any more who is connected to this port of this machine: connections that are kept
/// open for a next request end, answers under way are still sent.
void hearNobody(int ownPort);

}  // namespace lamp::controller
