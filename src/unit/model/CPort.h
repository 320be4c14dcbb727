#pragma once

#include "CapeOpenBaseObject.h"
#include "com/ComRef.h"

#include <string>
#include <vector>

namespace solvane {

class Unit;

/// A product as the script stated it; the stream is flashed accordingly when the script has ended.
struct ProductSpecification {
    bool specified = false;          ///< setProduct was called in this run
    double totalFlow = 0;            ///< mol/s
    std::vector<double> composition; ///< mole fractions, in the order of the run's compounds
    /// One of the two flash constraints: the name of a property that may constrain a flash, and its value in
    /// SI units on a mole basis.
    struct Constraint {
        std::string name;
        double value = 0;
    };
    Constraint constraints[2];
};

/// One material port of the unit. A port holds a material of one generation or none: a material that offers
/// both is taken as 1.1.
class CPort : public DispatchImpl<ICapeUnitPort>, public CapeOpenBaseObject {
public:
    bool isFeed = true;
    /// Not counted: the unit owns its ports. Null for a port that no unit made.
    Unit* ownerUnit = nullptr;

    ComRef<ICapeThermoMaterial> materialObject11;
    ComRef<ICapeThermoMaterialObject> materialObject10;
    // Interfaces of the 1.1 material, queried on first use and kept while it is connected: see interfaceOf.
    ComRef<ICapeThermoCompounds> compounds;
    ComRef<ICapeThermoPhases> phases;
    ComRef<ICapeThermoEquilibriumRoutine> equilibriumRoutine;

    ProductSpecification product;

    /// An interface of the 1.1 material that the caller uses; empty if the material does not have it. Kept
    /// only if that material is still connected: the host may connect another one from inside any call.
    template <class Interface>
    ComRef<Interface> interfaceOf(const ComRef<ICapeThermoMaterial>& material,
                                  ComRef<Interface> CPort::* kept) {
        if (material.get() == materialObject11.get() && this->*kept)
            return this->*kept;
        ComRef<Interface> found = material.as<Interface>();
        if (material.get() == materialObject11.get())
            this->*kept = found;
        return found;
    }

    bool isConnected() const { return materialObject10 || materialObject11; }

    // One of each for all interfaces; the form in which the object is created implements them.
    STDMETHODIMP QueryInterface(REFIID iid, void** result) override = 0;
    STDMETHODIMP_(ULONG) AddRef() override = 0;
    STDMETHODIMP_(ULONG) Release() override = 0;

    static std::span<const InterfaceEntry> interfaceTable();
    HRESULT FinalConstruct() { return S_OK; }

    // ICapeUnitPort
    STDMETHODIMP get_portType(CapePortType* portType) override;
    STDMETHODIMP get_direction(CapePortDirection* direction) override;
    STDMETHODIMP get_connectedObject(IDispatch** object) override;
    STDMETHODIMP Connect(IDispatch* object) override;
    STDMETHODIMP Disconnect() override;
};

} // namespace solvane
