#pragma once

#include <string>

namespace solvane {

/// For its lifetime Matlab.Application is the scripted stand-in, for the whole machine, since COM looks for
/// classes nowhere else. What stood there before is kept in a key of its own and put back at the end; where
/// a program ended without that, the next registration, or `restore`, does it.
class MatlabRegistration {
public:
    MatlabRegistration();
    ~MatlabRegistration();
    MatlabRegistration(const MatlabRegistration&) = delete;
    MatlabRegistration& operator=(const MatlabRegistration&) = delete;

    /// As "Matlab.Application.9.14".
    void setCurrentVersion(const std::wstring& version);
    void removeCurrentVersion();
    void setClass();
    /// Leads the class elsewhere than to the stand-in: to the file of a server in the client's process.
    void setServer(const std::wstring& path);
    /// Leads the class to the server that all clients share, in a process of its own.
    void setSharedServer();
    /// The version stays: Matlab was there once.
    void removeClass();

    /// Puts back what stood there before the last registration; nothing where that has been done.
    static void restore();
};

} // namespace solvane
