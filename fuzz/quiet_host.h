/// @file
/// @brief A host that counts the messages and keeps nothing, for programs that provoke them by the
/// million. It is the message manager from the start.
#pragma once

namespace quiet_host {

/// The messages that went to `ut_status` since the last call.
unsigned take_statuses();

} // namespace quiet_host
