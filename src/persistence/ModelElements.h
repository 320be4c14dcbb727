/// Reads the elements of a model's description into the unit.
#pragma once

#include "unit/model/Unit.h"

#include <libxml/xmlreader.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace solvane {

/// Reads one description. Each fault becomes a line of the unit's `loadWarnings`.
class ModelElements {
public:
    ModelElements(Unit& unit, xmlTextReader* reader) : unit_(unit), reader_(reader) {}

    /// Handles the reader's current node.
    void HandleModelNode();

    /// Completes the list of warnings, which has a limited length, with the number of those left out.
    void finishWarnings();

private:
    using Attribute = std::optional<std::string>;

    struct Element {
        std::string_view name;
        void (ModelElements::*begin)();
    };
    static const std::array<Element, 8> elements;

    void beginElement(std::string_view name);
    void endElement(std::string_view name);
    void beginRoot() {}
    void beginInformation();
    void beginReport();
    void beginFeed() { beginPort(true, unit_.feedPorts, "Feed port is missing name\r\n"); }
    void beginProduct() { beginPort(false, unit_.productPorts, "Product port is missing name\r\n"); }
    void beginPort(bool isFeed, std::vector<ComRef<CPort>>& ports, const char* missing);
    void beginFile();
    void beginOption();
    void beginParameter();
    void readParameter(CParameter& parameter);
    void readDimensionality(CParameter& parameter, const std::string& list);

    /// Converts the text to the parameter's kind; empty, with the warning, if that fails.
    std::optional<Variant> valueFrom(const CParameter& parameter, const std::string& text,
                                     const char* invalid);

    Attribute attribute(const char* name) const;
    /// Adds the warning if the element does not have the attribute.
    Attribute required(const char* name, const char* missing);
    void warn(const std::string& line);

    Unit& unit_;
    xmlTextReader* reader_;
    CParameter* openOptionParameter = nullptr; ///< whose options are being read
    std::wstring* textTarget = nullptr;        ///< the report whose text is being read
    std::size_t warningsLeftOut_ = 0;
};

} // namespace solvane
