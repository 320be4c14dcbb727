#include "MutatedModels.h"

#include "Damage.h"

#include <array>

namespace solvane {

namespace {

using namespace std::string_view_literals;

/// What a reader of zips and of XML may stumble over.
constexpr std::array snippets = {
    "\xFF\xFF\xFF\xFF"sv,
    "\0\0\0\0"sv,
    "\0\0\0\x80"sv,
    "PK\1\2"sv,
    "PK\3\4"sv,
    "PK\5\6"sv,
    "PK\6\7"sv,
    "<"sv,
    "/>"sv,
    "</parameter>"sv,
    "</report>"sv,
    "<option value=\"x\"/>"sv,
    "&#0;"sv,
    "&#xD800;"sv,
    "&lt"sv,
    "]]>"sv,
    "<![CDATA["sv,
    "<!--"sv,
    "<?x"sv,
    "<!DOCTYPE a ["sv,
    "\""sv,
    " encoding=\"UTF-16\""sv,
    " encoding=\"x\""sv,
    "name=\"calc.m\""sv,
    "name=\"unit.xml\""sv,
    "name=\"_unitOperationModel_.svm\""sv,
    "1e999"sv,
    "-"sv,
    "\xC3\xA9"sv,
    "\xF8"sv,
    "<file name=\"../../x\" />"sv,
};

constexpr std::array declarations = {
    "<!ENTITY e \"&#60;feed name='F'/>\">"sv,
    "<!ENTITY % e SYSTEM \"file:///C:/windows/win.ini\"> %e;"sv,
    "<!ATTLIST feed name CDATA \"F\">"sv,
    "<!ELEMENT UnitOperation ANY>"sv,
};
constexpr std::array foreignNames = {"..\\x"sv,     "C:\\x"sv,       "runUnit.m"sv,
                                     "INITRUN.M"sv, "unit.xml"sv,    "_unitOperationModel_.svm"sv,
                                     "unit.xml "sv, "runUnit.m."sv,  "x:y"sv,
                                     "nul.m"sv,     "_UNITO~1.SVM"sv};

/// A document that asks for time or memory without end, or for files that are not the model's.
std::string hostileDocument(Damage& damage) {
    const std::size_t count = damage.below(300'000);
    std::string attributes;
    std::string elements;
    std::string type;
    switch (damage.below(4)) {
    case 0:
        type = "<!DOCTYPE UnitOperation [" + std::string(damage.anyOf(declarations)) + "]>";
        elements = "&e;";
        break;
    case 1:
        for (std::size_t i = 0; i < count; ++i)
            attributes += " a" + std::to_string(i) + "='>'";
        break;
    case 2:
        for (std::size_t i = 0; i < count; ++i)
            elements += "<feed name=\"F\"/>";
        break;
    default:
        elements = "<file name=\"" + std::string(damage.anyOf(foreignNames)) + "\"/>";
    }
    return type + "<UnitOperation" + attributes + ">" + elements + "</UnitOperation>";
}

} // namespace

MutatedModels::MutatedModels(std::wstring folder)
    : folder_(std::move(folder)),
      model_{
          {"unit.xml",
           unitDocument(
               "<docInfo version=\"1\" infoLevel=\"0\" />\n<report name=\"Matlab Output\">a&#xA;b</report>\n"
               "<report name=\"R\"></report>\n<feed name=\"F\" />\n<product name=\"P\" />\n"
               "<parameter name=\"r\" mode=\"input\" type=\"real\" value=\"1.5\" min=\"0\" max=\"2\" "
               "def=\"1\" uom=\"1,0,-2\" />\n"
               "<parameter name=\"i\" mode=\"output\" type=\"int\" value=\"3\" min=\"0\" />\n"
               "<parameter name=\"b\" mode=\"input\" type=\"bool\" value=\"TRUE\" def=\"FALSE\" />\n"
               "<parameter name=\"s\" mode=\"input\" type=\"string\" value=\"x\" restricted=\"TRUE\" >\n"
               " <option value=\"x\"/>\n <option value=\"y\"/>\n</parameter>\n<file name=\"data.txt\" />\n")},
          {"calc.m", "x = 1;\n"},
          {"data.txt", std::string(3000, 'd')},
      },
      container_(zipOf(model_, folder_)) {}

HostStream MutatedModels::mutated(std::uint32_t seed, int number) const {
    Damage damage(seed, number, snippets);
    if (number % 50 == 0) {
        std::vector<Entry> entries = model_;
        entries[0].second = hostileDocument(damage);
        for (const std::string_view name : foreignNames)
            entries.emplace_back(name, "hostile");
        return HostStream(zipOf(entries, folder_));
    }
    if (number % 3 == 0) {
        std::vector<Entry> entries = model_;
        damage.to(entries[0].second);
        return HostStream(zipOf(entries, folder_));
    }
    std::string bytes = container_;
    if (number % 3 == 1) {
        damage.to(bytes);
        return HostStream(bytes);
    }
    HostStream stream(container_);
    damage.to(stream.bytes);
    return stream;
}

} // namespace solvane
