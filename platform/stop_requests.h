// Requests of the user or the system that the program stop.
#pragma once

namespace velinor {

// From here on a request to stop is remembered instead of ending the process: SIGINT, SIGTERM and SIGHUP; on
// Windows also Ctrl+C, Ctrl+Break, the end of the console and of the session. What the parent process has
// switched off stays off.
void rememberStopRequests();

// Whether one has come since. Cheap.
bool isStopRequested();

}  // namespace velinor
