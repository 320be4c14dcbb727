#pragma once

#include "CapeOpen.h"
#include "SimulationContext.h"
#include "cases/CaseModel.h"
#include "results/Fault.h"

#include <string>

namespace solvane::host {

/// A unit operation from its creation to its release. The constructor's arguments must outlive it.
class UnitSession {
public:
    UnitSession(const UnitCase& unitCase, const Profile& profile) : case_(unitCase), profile_(profile) {}
    ~UnitSession();
    UnitSession(const UnitSession&) = delete;
    UnitSession& operator=(const UnitSession&) = delete;

    /// Creates the unit, loads its model in the order of the profile, and sets its parameters. False with the
    /// host's or the unit's text.
    bool start(const LogSink& log, std::string& error);

    /// Whether `restart` does the same as `start` of a new session. Only our own unit is known to.
    bool canRestart() const;

    /// Loads the model again and sets the parameters, so that nothing remains of earlier runs but what a
    /// script keeps in Matlab. False with a text.
    bool restart(std::string& error);

    /// The cause of a failed `start` or `restart`.
    Fault fault() const { return fault_; }

    /// Null after `release`.
    ICapeUnit* unit() const { return unit_.get(); }

    bool terminate(std::string& error);
    /// Releases all references of the host.
    void release();

private:
    bool create(std::string& error);
    bool doStep(StartupStep step, const LogSink& log, std::string& error);
    bool giveContext(const LogSink& log, std::string& error);
    bool loadModel(std::string& error);
    bool reloadModel(std::string& error);
    bool isOurs() const;
    bool checked(const char* call, HRESULT result, std::string& error) const;

    const UnitCase& case_;
    const Profile& profile_;
    ComRef<ICapeUnit> unit_;
    ComRef<ICapeUtilities> utilities_;
    Fault fault_ = Fault::calculation;
};

} // namespace solvane::host
