#pragma once

#include "ClientProcess.h"
#include "ModelBag.h"

#include <oaidl.h>

namespace solvane {

struct Connection {
    std::wstring port;
    IDispatch* material;
};

/// A run of a unit in front of a scripted Matlab whose script is the client. The client finds `object` where
/// there is one. A failed run gives no timings, after a message.
Timings measureInRun(ModelBag& model, const std::vector<Connection>& connections,
                     const std::vector<std::string>& ways, IDispatch* object = nullptr);

} // namespace solvane
