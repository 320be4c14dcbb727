#include "Material.h"

#include "Material10.h"
#include "Material11.h"

namespace solvane::host {

ComRef<IDispatch> createMaterial(Generation generation, std::shared_ptr<StreamState> state,
                                 std::wstring name) {
    return generation == Generation::v10 ? Material10::create(std::move(state), std::move(name))
                                         : Material11::create(std::move(state), std::move(name));
}

} // namespace solvane::host
