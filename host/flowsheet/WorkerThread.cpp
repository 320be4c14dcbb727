#include "WorkerThread.h"

#include "InterfaceRegistration.h"
#include "com/Apartment.h"
#include "com/CapeError.h"
#include "com/Handle.h"
#include "com/Text.h"

#include <thread>

namespace solvane::host {

namespace {

/// An interface on its way to another apartment.
template <class T>
class Parcel {
public:
    HRESULT pack(T* object) {
        return CoMarshalInterThreadInterfaceInStream(__uuidof(T), object, stream_.put());
    }
    HRESULT unpack(ComRef<T>& object) {
        return CoGetInterfaceAndReleaseStream(stream_.release(), __uuidof(T), object.putVoid());
    }

private:
    ComRef<IStream> stream_;
};

void serveMessagesUntil(HANDLE finished) {
    while (MsgWaitForMultipleObjectsEx(1, &finished, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
           WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

bool failed(std::string& error, const char* what, HRESULT result) {
    error = std::string(what) + ": " + narrow(FormatHresultText(result), CP_UTF8);
    return false;
}

} // namespace

bool runOnWorker(ICapeUnit* unit, const std::vector<Connection>& connections,
                 const std::function<bool(ICapeUnit* unit, const std::vector<Connection>& connections,
                                          std::string& error)>& task,
                 std::string& error) {
    if (!areInterfacesRegistered()) {
        error = "This profile passes calls between threads through the registered CAPE-OPEN type library, "
                "but none "
                "is registered; run \"SolvaneHost register-interfaces\" first";
        return false;
    }
    Parcel<ICapeUnit> unitParcel;
    HRESULT result = unitParcel.pack(unit);
    std::vector<Parcel<IDispatch>> materialParcels(connections.size());
    for (std::size_t i = 0; SUCCEEDED(result) && i < connections.size(); ++i)
        result = materialParcels[i].pack(connections[i].material.get());
    if (FAILED(result))
        return failed(error, "The unit cannot be passed to another thread", result);

    const Handle finished(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    bool succeeded = false;
    std::thread worker([&] {
        {
            const Apartment apartment(COINIT_MULTITHREADED);
            ComRef<ICapeUnit> unitProxy;
            HRESULT unpacked = unitParcel.unpack(unitProxy);
            std::vector<Connection> proxies;
            for (std::size_t i = 0; SUCCEEDED(unpacked) && i < connections.size(); ++i) {
                proxies.push_back({connections[i].port, {}});
                unpacked = materialParcels[i].unpack(proxies.back().material);
            }
            succeeded = SUCCEEDED(unpacked)
                            ? task(unitProxy.get(), proxies, error)
                            : failed(error, "The unit cannot be called from another thread", unpacked);
        }
        SetEvent(finished.get());
    });
    serveMessagesUntil(finished.get());
    worker.join();
    return succeeded;
}

} // namespace solvane::host
