// The helper process "normal.exe", which plays the microphone back into the headset. GUI thread only.
#pragma once

namespace MonitoringTask {

// Starts the process unless it already runs.
void ensureRunning();

// Starts it as above when wanted, stops it otherwise.
void follow(bool wanted);

} // namespace MonitoringTask
