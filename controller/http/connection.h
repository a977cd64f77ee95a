#pragma once

namespace lamp::controller {

/// Breaks the connection whose client has this port, without another byte: the web library has no
/// way to leave a request unanswered. Does nothing when there is no such connection.
void breakConnection(int clientPort);

/// True while that client still waits.
bool clientWaits(int clientPort);

}  // namespace lamp::controller
