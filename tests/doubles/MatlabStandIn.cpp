#include "MatlabStandIn.h"

#include <mutex>

namespace solvane {

MatlabStandIn::MatlabStandIn() {
    setMatlabBehaviour(this);
}

MatlabStandIn::~MatlabStandIn() {
    setMatlabBehaviour(nullptr);
}

std::vector<std::wstring> MatlabStandIn::calls() {
    const std::lock_guard hold(lock_);
    return calls_;
}

void MatlabStandIn::forgetCalls() {
    const std::lock_guard hold(lock_);
    calls_.clear();
}

void MatlabStandIn::note(const std::wstring& call) {
    const std::lock_guard hold(lock_);
    calls_.push_back(call);
}

HRESULT MatlabStandIn::create() {
    note(L"create");
    return creation;
}

HRESULT MatlabStandIn::findMember(const wchar_t* name) {
    const auto unknown = unknownMembers.find(name);
    return unknown == unknownMembers.end() ? S_OK : unknown->second;
}

HRESULT MatlabStandIn::execute(const wchar_t* text, VARIANT* result) {
    const std::wstring command(text);
    note(command);
    std::wstring folder;
    {
        const std::lock_guard hold(lock_);
        if (command.starts_with(L"cd '"))
            folders_[GetCurrentThreadId()] = command.substr(4, command.size() - 5);
        folder = folders_[GetCurrentThreadId()];
    }
    MatlabAnswer answer;
    if (command == L"runUnit")
        answer = onRun ? onRun(folder) : printed(L"MATLAB output:\nMATLAB done\n");
    else if (onCommand)
        answer = onCommand(command);
    *result = answer.value.release();
    return answer.result;
}

HRESULT MatlabStandIn::putVisible(const VARIANT& value) {
    note(value.vt == VT_I4 ? L"Visible=" + std::to_wstring(value.lVal) : L"Visible=?");
    return visibility;
}

void MatlabStandIn::released() {
    note(L"release");
}

} // namespace solvane
