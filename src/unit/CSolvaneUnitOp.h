#pragma once

#include "CParameter.h"
#include "CParameterCollection.h"
#include "CPort.h"
#include "CapeOpenBaseObject.h"
#include "UnitActivity.h"
#include "com/ComRef.h"
#include "com/Handle.h"

#include <ocidl.h>

#include <clocale>
#include <string>
#include <vector>

namespace solvane {

/// What the worker thread is to do, and afterwards how it went.
struct WorkerCommand {
    static constexpr std::int32_t start = 0;
    static constexpr std::int32_t quit = 1;
    static constexpr std::int32_t run = 2;
    static constexpr std::int32_t succeeded = 0;
    static constexpr std::int32_t failed = 1;
};

/// Frees a locale handle.
struct NumericLocalePolicy {
    using Type = _locale_t;
    static Type empty() { return nullptr; }
    static void close(Type locale) { _free_locale(locale); }
};

/// The unit operation that a host creates. Its fields are the model: the run-time, the persistence and the
/// window work on them directly, and its interface methods are short roads into those rooms.
///
/// All calls come on the thread of the host's apartment. The fields that the worker thread writes are marked;
/// it does so only between `workerCommandEvent` and `workerDoneEvent`, which order the two threads.
class CSolvaneUnitOp : public DispatchImpl<ICapeCollection>,
                       public DispatchImpl<ICapeUnit>,
                       public DispatchImpl<ICapeUnitReport>,
                       public DispatchImpl<ICapeUtilities>,
                       public CapeOpenBaseObject,
                       public IPersistPropertyBag,
                       public IPersistStream {
public:
    CSolvaneUnitOp();
    ~CSolvaneUnitOp() override;

    bool modelEdited = false; ///< cleared when Edit starts, set by every change of the model
    /// The "C" locale, in which the model's numbers are printed and read.
    Unique<NumericLocalePolicy> numericLocale;
    std::string unitId;            ///< GUID with braces; names the shared block and the events
    std::string workingFolder;     ///< ANSI, ends in a backslash
    FileHandle workingFolderHold;  ///< tells other processes that the folder is in use
    std::string startupError;      ///< why `startupOk` is false (worker thread: start)
    bool startupOk = true;         ///< the unit may be used (worker thread: start)
    Handle requestEvent;           ///< set by the gateway
    Handle replyEvent;             ///< set by the driver
    bool terminated = true;        ///< Terminate has nothing (more) to do
    unsigned activities = 0;       ///< UnitActivity bits: what the unit is in the middle of
    bool terminationAsked = false; ///< Terminate came in the middle of something
    std::int32_t echoLevel = 0;    ///< 1: each command line of the script is echoed
    bool modified = false;         ///< the model was changed since the unit was made
    ComRef<IDispatch> simulationContext;
    ComRef<ICapeDiagnostic> diagnostic; ///< of the context, asked for on first use
    bool workaroundDone = false;        ///< the private model file was looked for, or need not be
    std::string unreadPrivateModel;     ///< path of a private model file that could not be loaded

    // A port's place in its list, from 1, is its number in the script.
    std::vector<ComRef<CPort>> feedPorts;
    std::vector<ComRef<CPort>> productPorts;
    std::vector<ComRef<CParameter>> parameters;
    CapeValidationStatus valStatus = CAPE_NOT_VALIDATED;
    ComRef<CParameterCollection> parameterCollection;

    // User reports: two lists of one length.
    std::vector<std::wstring> reportNames;
    std::vector<std::wstring> reportTexts;
    std::wstring selectedReport;
    std::wstring outputText; ///< what Matlab printed in the last run

    std::vector<std::string> additionalFiles; ///< names in `workingFolder`, ANSI
    std::string loadWarnings;                 ///< of the last load of a model file, a line each

    Handle workerCommandEvent;
    Handle workerDoneEvent;
    Handle workerThread;
    Handle workerCancelEvent;       ///< once it is set, a run that waits for its turn on Matlab gives up
    std::wstring workerError;       ///< why a run failed (worker thread: run)
    std::wstring workerOutput;      ///< what Matlab printed in it (worker thread: run)
    std::int32_t workerCommand = 0; ///< a WorkerCommand and its outcome (worker thread: all)

    bool scriptDirty = true; ///< unitCalc.m must be built again from calc.m

    /// Says that the user changed the model in the window, or the host a parameter's value. What a run itself
    /// changes does not count.
    void markChanged() {
        modified = true;
        modelEdited = true;
    }

    /// A new port or parameter of this unit, for the caller to put into its list.
    ComRef<CPort> CreatePort(bool isFeed, const std::wstring& name);
    ComRef<CParameter> CreateParameter(ParameterKind kind, bool isInput, const std::wstring& name);

    /// Whether a model can be loaded and saved: not before the folder is made, and not after Terminate.
    bool hasWorkingFolder() const { return !workingFolder.empty() && !terminated; }

    /// Where the host takes messages; empty where it does not.
    ComRef<ICapeDiagnostic> hostLog();

    /// Feeds, then products.
    std::vector<ComRef<CPort>> allPorts() const;

    /// Empties the lists. Ports are disconnected; what the host still holds no longer knows the unit.
    void releasePorts();
    void releaseParameters();

    // One of each for all interfaces; the form in which the object is created implements them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override = 0;
    STDMETHODIMP_(ULONG) AddRef() override = 0;
    STDMETHODIMP_(ULONG) Release() override = 0;

    static std::span<const InterfaceEntry> interfaceTable();
    /// Builds the whole unit up to a started Matlab. It succeeds even where that fails: then `startupOk` is
    /// false and `startupError` says why.
    HRESULT FinalConstruct();
    void FinalRelease() { stop(); }

    /// What Terminate does, at once.
    HRESULT stop();

    // ICapeCollection: the ports, feeds first
    STDMETHODIMP Item(VARIANT id, IDispatch** item) override;
    STDMETHODIMP Count(LONG* count) override;
    // ICapeUnit
    STDMETHODIMP get_ports(IDispatch** ports) override;
    STDMETHODIMP get_ValStatus(CapeValidationStatus* status) override;
    STDMETHODIMP Calculate() override;
    STDMETHODIMP Validate(BSTR* message, VARIANT_BOOL* isValid) override;
    // ICapeUnitReport
    STDMETHODIMP get_reports(VARIANT* reports) override;
    STDMETHODIMP get_selectedReport(BSTR* report) override;
    STDMETHODIMP put_selectedReport(BSTR report) override;
    STDMETHODIMP ProduceReport(BSTR* message) override;
    // ICapeUtilities
    STDMETHODIMP get_parameters(IDispatch** result) override;
    STDMETHODIMP put_simulationContext(IDispatch* context) override;
    STDMETHODIMP Initialize() override;
    STDMETHODIMP Terminate() override;
    STDMETHODIMP Edit() override;
    // IPersist
    STDMETHODIMP GetClassID(CLSID* classId) override;
    // IPersistPropertyBag
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* errorLog) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
    // IPersistStream
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

private:
    bool build(std::string& error);
    void waitForWorker() const;
    void forbidUse();
    /// Reads or writes the model through an interface of persistence, unless something hinders that.
    template <class Body>
    HRESULT persist(UnitActivity activity, const wchar_t* scope, const wchar_t* interfaceName, Body&& body);
    /// Fails a call on a unit that may not be used, with `startupError`.
    HRESULT raiseStopped(const wchar_t* scope, const wchar_t* interfaceName);
};

} // namespace solvane
