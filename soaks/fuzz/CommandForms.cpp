#include "CommandForms.h"

#include "gateway/Commands.h"

namespace solvane::soak {

namespace {

ArgumentKind kindOf(gateway::FieldKind field) {
    switch (field) {
    case gateway::FieldKind::composition:
        return ArgumentKind::composition;
    case gateway::FieldKind::text:
    case gateway::FieldKind::filledText:
        return ArgumentKind::text;
    default:
        return ArgumentKind::number;
    }
}

CommandForm formOf(const gateway::Command& command) {
    const auto fields = command.usedFields();
    CommandForm form{
        static_cast<std::uint32_t>(command.code), std::string(command.name), {}, command.reply.outputs};
    form.arguments.resize(fields.size());
    for (const gateway::Field& field : fields)
        form.arguments[field.argument - 1] = kindOf(field.kind);
    return form;
}

} // namespace

const std::vector<CommandForm>& commandForms() {
    static const std::vector<CommandForm> forms = [] {
        std::vector<CommandForm> made;
        for (const gateway::Command& command : gateway::allCommands())
            made.push_back(formOf(command));
        return made;
    }();
    return forms;
}

} // namespace solvane::soak
