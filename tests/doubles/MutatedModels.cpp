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
