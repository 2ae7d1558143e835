#pragma once

#include "bench/framecounter.h"
#include "testkit/steps.h"

/// One round: the tour's steps and, before its last one, what a long day has besides. The round
/// begins and ends without a connection, the frames are borrowed.
std::vector<Step> soakSteps(const SimulatorProcess &simulator, const QDir &folder,
                            FrameCounter *frames);
