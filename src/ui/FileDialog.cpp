#include "FileDialog.h"

#include <algorithm>

namespace solvane {

std::wstring FileDialog::ask(HWND owner, BOOL(WINAPI* dialog)(OPENFILENAMEW*)) const {
    std::wstring path(520, L'\0');
    std::copy_n(start.begin(), std::min(start.size(), path.size() - 1), path.begin());
    OPENFILENAMEW question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = owner;
    question.lpstrTitle = title;
    question.lpstrFilter = filter;
    question.lpstrDefExt = extension;
    question.lpstrFile = path.data();
    question.nMaxFile = static_cast<DWORD>(path.size());
    // The process's current folder is the host's.
    question.Flags = flags | OFN_NOCHANGEDIR;
    if (!dialog(&question))
        return {};
    path.resize(path.find(L'\0'));
    return path;
}

} // namespace solvane
