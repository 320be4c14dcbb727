#include "TypeLibraryText.h"

#include "com/Text.h"
#include "com/Variant.h"

#include <fstream>
#include <stdexcept>

namespace solvane {

namespace {

void check(HRESULT result) {
    if (FAILED(result))
        throw std::runtime_error("a type library can't be read");
}

std::string nameOf(ITypeInfo* type) {
    Bstr name;
    check(type->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr));
    return narrow(name.view());
}

std::string nameOf(ITypeInfo* type, MEMBERID member) {
    Bstr name;
    check(type->GetDocumentation(member, name.put(), nullptr, nullptr, nullptr));
    return narrow(name.view());
}

std::string textOf(const GUID& guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, 40);
    return narrow(std::wstring_view(text + 1, 36));
}

/// A type's attributes, given back at the end.
class Attributes {
public:
    explicit Attributes(ITypeInfo* type) : type_(type) { check(type->GetTypeAttr(&attributes_)); }
    ~Attributes() { type_->ReleaseTypeAttr(attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    const TYPEATTR* operator->() const { return attributes_; }

private:
    ITypeInfo* type_;
    TYPEATTR* attributes_ = nullptr;
};

std::string typeText(ITypeInfo* owner, const TYPEDESC& type) {
    static const std::map<VARTYPE, std::string> words{
        {VT_BSTR, "BSTR"},         {VT_VARIANT, "VARIANT"},
        {VT_BOOL, "VARIANT_BOOL"}, {VT_R8, "double"},
        {VT_I4, "long"},           {VT_INT, "int"},
        {VT_I2, "short"},          {VT_DISPATCH, "IDispatch*"},
        {VT_HRESULT, "HRESULT"},
    };
    if (type.vt == VT_PTR)
        return typeText(owner, *type.lptdesc) + "*";
    if (type.vt == VT_USERDEFINED) {
        ComRef<ITypeInfo> referred;
        check(owner->GetRefTypeInfo(type.hreftype, referred.put()));
        return nameOf(referred.get());
    }
    const auto word = words.find(type.vt);
    return word == words.end() ? "VARTYPE " + std::to_string(type.vt) : word->second;
}

std::string direction(USHORT flags) {
    if (flags & PARAMFLAG_FRETVAL)
        return "out ";
    return flags & PARAMFLAG_FOUT ? "inout " : "in ";
}

std::string describeFunction(ITypeInfo* type, const FUNCDESC& function) {
    const char* kind = function.invkind == INVOKE_PROPERTYGET   ? "get "
                       : function.invkind == INVOKE_PROPERTYPUT ? "put "
                                                                : "method ";
    std::string text = std::to_string(static_cast<std::size_t>(function.oVft) / sizeof(void*)) + ' ' +
                       std::to_string(function.memid) + ' ' + kind + nameOf(type, function.memid) + '(';
    for (SHORT i = 0; i < function.cParams; ++i) {
        const ELEMDESC& parameter = function.lprgelemdescParam[i];
        text +=
            (i ? ", " : "") + direction(parameter.paramdesc.wParamFlags) + typeText(type, parameter.tdesc);
    }
    text += ')';
    if (function.elemdescFunc.tdesc.vt != VT_HRESULT)
        text += " gives " + typeText(type, function.elemdescFunc.tdesc);
    return text;
}

/// The operations of a dual interface as early-bound callers see it, without those of its base.
std::vector<std::string> describeInterface(ITypeInfo* type) {
    const Attributes attributes(type);
    ComRef<ITypeInfo> dual;
    ComRef<ITypeInfo> base;
    HREFTYPE reference = 0;
    if (attributes->typekind == TKIND_DISPATCH) {
        check(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
        check(type->GetRefTypeInfo(reference, dual.put()));
        return describeInterface(dual.get());
    }
    check(type->GetRefTypeOfImplType(0, &reference));
    check(type->GetRefTypeInfo(reference, base.put()));
    std::vector<std::string> lines;
    if (nameOf(base.get()) != "IDispatch")
        lines.push_back("derives from " + nameOf(base.get()));
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        check(type->GetFuncDesc(i, &function));
        lines.push_back(describeFunction(type, *function));
        type->ReleaseFuncDesc(function);
    }
    return lines;
}

std::vector<std::string> describeValues(ITypeInfo* type) {
    const Attributes attributes(type);
    std::vector<std::string> lines;
    for (UINT i = 0; i < attributes->cVars; ++i) {
        VARDESC* value = nullptr;
        check(type->GetVarDesc(i, &value));
        lines.push_back(nameOf(type, value->memid) + ' ' + std::to_string(value->lpvarValue->lVal));
        type->ReleaseVarDesc(value);
    }
    return lines;
}

} // namespace

std::map<std::string, std::vector<std::string>> describeTypeLibrary(ITypeLib* library) {
    std::map<std::string, std::vector<std::string>> types;
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComRef<ITypeInfo> type;
        check(library->GetTypeInfo(i, type.put()));
        const Attributes attributes(type.get());
        const std::string name = nameOf(type.get());
        const std::string identity = name + ' ' + textOf(attributes->guid);
        if (attributes->typekind == TKIND_ENUM)
            types["enum " + name] = describeValues(type.get());
        else if (attributes->typekind == TKIND_ALIAS)
            types["alias " + identity + ' ' + typeText(type.get(), attributes->tdescAlias)] = {};
        else if (attributes->wTypeFlags & TYPEFLAG_FDUAL)
            types[identity] = describeInterface(type.get());
        else
            types["neither dual nor an enumeration: " + identity] = {};
    }
    return types;
}

std::map<std::string, std::vector<std::string>> readTypeTable(const std::string& path) {
    std::ifstream file(path);
    std::map<std::string, std::vector<std::string>> types;
    std::vector<std::string>* current = nullptr;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#'))
            continue;
        if (line.empty())
            current = nullptr;
        else if (current)
            current->push_back(line);
        else
            current = &types[line];
    }
    return types;
}

} // namespace solvane
