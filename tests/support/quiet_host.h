/// @file
/// @brief A host that counts what the library tells it and keeps nothing, for programs that provoke
/// messages by the million or watch every allocation.
#pragma once

namespace quiet_host {

/// The messages that went to `ut_status` since the last call.
unsigned take_statuses();

/// The reports since the last call. The quiet manager is in use from the start.
unsigned take_reports();

} // namespace quiet_host
