#include "HostCommands.h"

#include "doctor/Checks.h"

#include <algorithm>
#include <vector>

namespace solvane::host {

namespace {

constexpr std::size_t nameWidth = 22;

/// The first step that this one needs and that failed; null if there is none.
const char* hindrance(const Check& check, const std::vector<std::string>& notRight) {
    const auto found = std::ranges::find_if(
        check.needs, [&](const char* need) { return std::ranges::find(notRight, need) != notRight.end(); });
    return found == check.needs.end() ? nullptr : *found;
}

} // namespace

ExitCode doctorCommand() {
    Machine machine;
    std::vector<std::string> notRight;
    for (const Check& check : checks()) {
        print(stdout, padded(check.name, nameWidth)); // first, since a step may take long
        if (const char* need = hindrance(check, notRight)) {
            print(stdout, "skipped  needs the step \"" + std::string(need) + "\"\n");
            notRight.emplace_back(check.name);
            continue;
        }
        const Finding finding = check.look(machine);
        if (finding.isRight()) {
            print(stdout, "right    " + finding.text + "\n");
            continue;
        }
        print(stdout, "WRONG    " + finding.text + "\n" + padded("", nameWidth) + "to do    " +
                          finding.remedy + "\n");
        notRight.emplace_back(check.name);
    }
    print(stdout, notRight.empty() ? "All is right.\n" : "This machine is not ready to run the unit.\n");
    return notRight.empty() ? ok : calculationFailed;
}

} // namespace solvane::host
