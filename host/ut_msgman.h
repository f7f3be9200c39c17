/// @file
/// @brief The host's message manager, which receives internal-error reports.
#pragma once

#include "ut_api.h"

/// @addtogroup services Host services
/// @{

/// @brief Receives reports. A client may derive its own and set `ut_msgman` to it.
///
/// `report` is the fourteenth virtual slot. There is no virtual destructor, for it would take
/// slots before it; the library never destroys a manager.
class UT_API UT_MSGMAN {
public:
    /// @name Slots that the library never calls
    /// @{
    virtual void unused_0() {}  ///< unused
    virtual void unused_1() {}  ///< unused
    virtual void unused_2() {}  ///< unused
    virtual void unused_3() {}  ///< unused
    virtual void unused_4() {}  ///< unused
    virtual void unused_5() {}  ///< unused
    virtual void unused_6() {}  ///< unused
    virtual void unused_7() {}  ///< unused
    virtual void unused_8() {}  ///< unused
    virtual void unused_9() {}  ///< unused
    virtual void unused_10() {} ///< unused
    virtual void unused_11() {} ///< unused
    virtual void unused_12() {} ///< unused
    /// @}

    /// @brief One internal-error report, on the thread of the reporting operation, which goes on
    /// after it.
    /// @param text   always empty
    /// @param app    `cae_appname` at the time of the call
    /// @param id     message identifier made by `neoform`; the manager's to free
    /// @param line   source line of the report, fixed for each report site
    /// @param rev    revision text of the reporting unit
    /// @param kind   always 2
    /// @param extra  always null
    virtual void report(const char* text, const char* app, char* id, int line, const char* rev,
                        int kind, void* extra);

protected:
    ~UT_MSGMAN() = default;
};

/// The manager in use; read at every report.
extern UT_API UT_MSGMAN* ut_msgman;
/// The application's name; read at every report.
extern UT_API char* cae_appname;

/// @}
