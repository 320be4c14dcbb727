#include "Commands.h"

#include "channel/BlockSize.h"

#include <algorithm>

namespace solvane::gateway {

namespace {

constexpr Field port(std::size_t argument, const char* name) {
    return {FieldKind::port, argument, name};
}
constexpr Field number(std::size_t argument, const char* name) {
    return {FieldKind::number, argument, name};
}
constexpr Field composition(std::size_t argument, const char* name) {
    return {FieldKind::composition, argument, name};
}
constexpr Field value(std::size_t argument, const char* name) {
    return {FieldKind::value, argument, name};
}
constexpr Field text(std::size_t argument, const char* name, NameKind names = NameKind::any) {
    return {FieldKind::text, argument, name, names};
}
constexpr Field condition(std::size_t argument, const char* name) {
    return text(argument, name, NameKind::flashCondition);
}
constexpr Field filledText(std::size_t argument, const char* name, NameKind names) {
    return {FieldKind::filledText, argument, name, names};
}

constexpr ReplyForm nothing{unpackNothing, 0, ReplySize::small};
constexpr ReplyForm aCount{unpackCount, 1, ReplySize::small};
constexpr ReplyForm aNumber{unpackNumber, 1, ReplySize::small};
constexpr ReplyForm aText{unpackText, 1, ReplySize::small};
constexpr ReplyForm parameter{unpackParameter, 1, ReplySize::small};
constexpr ReplyForm vector{unpackVector, 1, ReplySize::compounds};
constexpr ReplyForm shaped{unpackShaped, 1, ReplySize::compounds};
constexpr ReplyForm constants{unpackConstants, 1, ReplySize::compounds};
constexpr ReplyForm equilibrium{unpackEquilibrium, 5, ReplySize::phases};

// clang-format off
constexpr std::array<Command, commandCount> commands{{
    {CommandCode::getFeedProp, "getFeedProp", "value = getFeedProp(feed, property)",
     {port(1, "feed"), text(2, "property", NameKind::feedProperty)}, shaped},
    {CommandCode::setProduct, "setProduct", "setProduct(product, flow, composition, name1, value1, name2, value2)",
     {port(1, "product"), number(2, "flow"), composition(3, "composition"), number(5, "value1"),
      number(7, "value2"), condition(4, "name1"), condition(6, "name2")}, nothing},
    {CommandCode::setReport, "setReport", "setReport(name, content)",
     {text(1, "name", NameKind::unitsOwn)}, nothing},
    {CommandCode::getParameter, "getParameter", "value = getParameter(name)",
     {text(1, "name", NameKind::unitsOwn)}, parameter},
    {CommandCode::setParameter, "setParameter", "setParameter(name, value)",
     {text(1, "name", NameKind::unitsOwn), value(2, "value")}, nothing},
    {CommandCode::getCompoundConstant, "getCompoundConstant", "values = getCompoundConstant(name)",
     {filledText(1, "name", NameKind::compoundConstant)}, constants},
    {CommandCode::getTDependentProperty, "getTDependentProperty", "values = getTDependentProperty(name, T)",
     {number(2, "T"), text(1, "name", NameKind::temperatureDependent)}, vector},
    {CommandCode::getPDependentProperty, "getPDependentProperty", "values = getPDependentProperty(name, P)",
     {number(2, "P"), text(1, "name", NameKind::pressureDependent)}, vector},
    {CommandCode::getSinglePhaseProperty, "getSinglePhaseProperty", "value = getSinglePhaseProperty(name, phase, T, P, X)",
     {number(3, "T"), number(4, "P"), composition(5, "X"), text(1, "name", NameKind::singlePhaseProperty),
      text(2, "phase")}, shaped},
    {CommandCode::getTwoPhaseProperty, "getTwoPhaseProperty", "value = getTwoPhaseProperty(name, phase1, phase2, T, P, X1, X2)",
     {number(4, "T"), number(5, "P"), composition(6, "X1"), composition(7, "X2"),
      text(1, "name", NameKind::twoPhaseProperty), text(2, "phase1"), text(3, "phase2")}, shaped},
    {CommandCode::getPropertyUnit, "getPropertyUnit", "unit = getPropertyUnit(name)",
     {text(1, "name", NameKind::property)}, aText},
    {CommandCode::getUnitName, "getUnitName", "name = getUnitName()",
     {}, aText},
    {CommandCode::getFeedCount, "getFeedCount", "count = getFeedCount()",
     {}, aCount},
    {CommandCode::getProductCount, "getProductCount", "count = getProductCount()",
     {}, aCount},
    {CommandCode::getFeedEquilibrium, "getFeedEquilibrium", "[phases, fractions, compositions, T, P] = getFeedEquilibrium(feed)",
     {port(1, "feed")}, equilibrium},
    {CommandCode::flashEquilibrium, "flashEquilibrium",
     "[phases, fractions, compositions, T, P] = flashEquilibrium(X, name1, value1, name2, value2)",
     {composition(1, "X"), number(3, "value1"), number(5, "value2"), condition(2, "name1"), condition(4, "name2")},
     equilibrium},
    {CommandCode::flashProperty, "flashProperty", "value = flashProperty(X, name1, value1, name2, value2, property)",
     {composition(1, "X"), number(3, "value1"), number(5, "value2"), condition(2, "name1"), condition(4, "name2"),
      text(6, "property", NameKind::overallProperty)}, aNumber},
    {CommandCode::logMessage, "logMessage", "logMessage(text)",
     {text(1, "text")}, nothing},
}};
// clang-format on

/// Holds every small answer, and most failures' texts.
constexpr std::size_t smallReply = 256;

/// Materials of version 1.0 don't say beforehand how many phases there may be.
constexpr std::size_t usualPhaseCount = 3;

} // namespace

std::span<const Field> Command::usedFields() const {
    const auto end = std::ranges::find(fields, std::size_t{0}, &Field::argument);
    return {fields.begin(), end};
}

std::span<const Command> allCommands() {
    return commands;
}

const Command* findCommand(std::string_view name) {
    const auto found = std::ranges::find(commands, name, &Command::name);
    return found == commands.end() ? nullptr : &*found;
}

std::size_t wantedBytes(const Command& command, const Run& run) {
    switch (command.reply.size) {
    case ReplySize::small:
        return smallReply;
    case ReplySize::compounds:
        return smallReply + 8 * run.compoundCount;
    case ReplySize::phases:
        return smallReply + static_cast<std::size_t>(bytesPerPhase(run.compoundCount)) *
                                std::max(run.phaseNames.size(), usualPhaseCount);
    }
    return smallReply;
}

} // namespace solvane::gateway
