#pragma once

#include "simulator/state/state.h"

namespace sim {

/// The state as it is kept in a file.
Json::Value stateDocument(const State &state);

/// `document` is an object. False, with `state` untouched and `error` telling the reason, unless
/// the document holds all of a state and every value is one that a terminal with these options can
/// have. Never throws.
bool readState(const Json::Value &document, const DeviceOptions &options, State *state,
               QString *error);

} // namespace sim
