#pragma once

#include "bench/framecounter.h"
#include "testkit/steps.h"

/// Returns the steps of one round: those of a session and, before the last of them, longer previews
/// and repeated connections. The round begins and ends disconnected. The steps use `frames`, which
/// the caller owns.
std::vector<Step> soakSteps(const SimulatorProcess &simulator, const QDir &folder,
                            FrameCounter *frames);
