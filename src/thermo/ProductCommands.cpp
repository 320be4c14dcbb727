#include "ProductCommands.h"

#include "CalculationRun.h"
#include "FlashConstraints.h"
#include "PortNumber.h"
#include "channel/ChannelFrame.h"
#include "unit/model/Unit.h"

namespace solvane {

bool setProduct(CalculationRun& run, RequestReader& request, ReplyWriter& reply, std::string& error) {
    const std::int32_t number = request.integer();
    CPort* port = findPort(run, run.unit.productPorts, number, "setProduct", error);
    if (!port)
        return false;
    ProductSpecification product;
    product.specified = true;
    product.totalFlow = request.real();
    product.composition = request.reals(run.nComp);
    for (FlashConstraint& constraint : product.constraints)
        constraint.value = request.real();
    for (FlashConstraint& constraint : product.constraints)
        constraint.name = request.text();
    if (!areFlashConstraints(product.constraints, "setProduct: ", error))
        return false;
    port->product = std::move(product);
    reply.success();
    return true;
}

} // namespace solvane
