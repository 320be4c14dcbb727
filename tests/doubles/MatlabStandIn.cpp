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

std::wstring MatlabStandIn::workingFolder() {
    const std::lock_guard hold(lock_);
    return workingFolder_;
}

void MatlabStandIn::note(const std::wstring& call) {
    const std::lock_guard hold(lock_);
    calls_.push_back(call);
}

HRESULT MatlabStandIn::create() {
    note(L"create");
    if (onCreate)
        onCreate();
    return creation;
}

HRESULT MatlabStandIn::findMember(const wchar_t* name) {
    const auto unknown = unknownMembers.find(name);
    return unknown == unknownMembers.end() ? S_OK : unknown->second;
}

namespace {

/// What stands between the quotes of a command like "cd 'folder'"; empty for another command.
std::wstring quotedBehind(const std::wstring& verb, const std::wstring& command) {
    const std::wstring before = verb + L" '";
    if (!command.starts_with(before) || !command.ends_with(L'\''))
        return {};
    return command.substr(before.size(), command.size() - before.size() - 1);
}

} // namespace

HRESULT MatlabStandIn::execute(const wchar_t* text, VARIANT* result) {
    const std::wstring command(text);
    note(command);
    std::wstring folder;
    {
        const std::lock_guard hold(lock_);
        if (command.starts_with(L"cd "))
            folders_[GetCurrentThreadId()] = quotedBehind(L"cd", command);
        folder = folders_[GetCurrentThreadId()];
        // Of the folders on the path only the working folder ends so.
        if (const std::wstring added = quotedBehind(L"addpath", command); added.ends_with(L'\\'))
            workingFolder_ = added;
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
