#pragma once

#include "CParameter.h"
#include "CPort.h"
#include "CapeOpenBaseObject.h"
#include "MatlabWorker.h"
#include "com/ComRef.h"
#include "com/Handle.h"

#include <clocale>
#include <cstdint>
#include <string>
#include <vector>

namespace solvane {

/// Frees a locale handle.
struct NumericLocalePolicy {
    using Type = _locale_t;
    static Type empty() { return nullptr; }
    static void close(Type locale) { _free_locale(locale); }
};

/// The state of a unit operation. Its fields are the model: the run-time, the persistence and the window work
/// on them directly. The host sees them through CSolvaneUnitOp.
///
/// All calls come on the thread of the host's apartment; MatlabWorker says what the worker thread touches.
class Unit : public CapeOpenBaseObject, public MatlabWorker {
public:
    Unit();

    bool modelEdited = false; ///< cleared when Edit starts, set by every change of the model
    /// The "C" locale, in which the model's numbers are printed and read.
    Unique<NumericLocalePolicy> numericLocale;
    std::string unitId;            ///< GUID with braces; names the shared block and the events
    Handle requestEvent;           ///< set by the gateway
    Handle replyEvent;             ///< set by the driver
    bool terminated = true;        ///< Terminate has nothing left to do
    unsigned activities = 0;       ///< UnitActivity bits: what the unit is in the middle of
    bool terminationAsked = false; ///< Terminate came in the middle of something
    std::int32_t echoLevel = 0;    ///< 1: each command line of the script is echoed
    bool modified = false;         ///< the model was changed since the unit was made
    ComRef<IDispatch> simulationContext;
    ComRef<ICapeDiagnostic> diagnostic; ///< of the context, queried on first use
    bool workaroundDone = false;        ///< the private model file was looked for, or need not be
    std::string unreadPrivateModel;     ///< path of a private model file that could not be loaded

    // A port's place in its list, from 1, is its number in the script.
    std::vector<ComRef<CPort>> feedPorts;
    std::vector<ComRef<CPort>> productPorts;
    std::vector<ComRef<CParameter>> parameters;
    CapeValidationStatus valStatus = CAPE_NOT_VALIDATED;

    // User reports: two lists of one length.
    std::vector<std::wstring> reportNames;
    std::vector<std::wstring> reportTexts;
    std::wstring selectedReport;
    std::wstring outputText; ///< what Matlab printed in the last run

    std::vector<std::string> additionalFiles; ///< names in `workingFolder`, ANSI
    std::string loadWarnings;                 ///< of the last load of a model file, one per line

    bool scriptDirty = true; ///< unitCalc.m must be built again from calc.m

    /// Records that the user changed the model in the window, or the host a parameter's value. Changes by a
    /// run itself do not count.
    void markChanged() {
        modified = true;
        modelEdited = true;
    }

    /// Whether a model can be loaded and saved: only between the folder's creation and Terminate.
    bool canHoldModel() const { return workingFolder && !terminated; }

    /// The unit must be validated before it is calculated again.
    void invalidate() { valStatus = CAPE_NOT_VALIDATED; }

    /// Empties the model before a load: ports, parameters, the echo level, and the additional files with
    /// their contents, which the next model's script would find otherwise. Reports and calc.m stay.
    void clear();
    void clearReports();

    /// A new port or parameter of this unit, for the caller to put into its list.
    ComRef<CPort> CreatePort(bool isFeed, const std::wstring& name);
    ComRef<CParameter> CreateParameter(ParameterKind kind, bool isInput, const std::wstring& name);

    /// The host's log; empty if it does not have one.
    ComRef<ICapeDiagnostic> hostLog();

    /// Feeds, then products.
    std::vector<ComRef<CPort>> allPorts() const;

    /// Empties the lists. Ports are disconnected; what the host still holds no longer knows the unit.
    void releasePorts();
    void releaseParameters();

    /// Terminates at once.
    virtual HRESULT stop() = 0;

    // One of each for all interfaces; the form in which the object is created implements them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override = 0;
    STDMETHODIMP_(ULONG) AddRef() override = 0;
    STDMETHODIMP_(ULONG) Release() override = 0;
};

} // namespace solvane
