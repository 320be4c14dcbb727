/// The elements of a model's description, each read into the unit where the XML reader meets it.
#pragma once

#include "unit/model/Unit.h"

#include <libxml/xmlreader.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace solvane {

/// One reading of a description. What is wrong with it becomes a line of the unit's `loadWarnings`.
class ModelElements {
public:
    ModelElements(Unit& unit, xmlTextReader* reader) : unit_(unit), reader_(reader) {}

    /// Reads the node at which the reader stands.
    void HandleModelNode();

    /// Ends the list of warnings, which is cut off where it holds more than anybody reads.
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

    /// A value of the parameter's kind; empty, with the warning, for a text that is no such value.
    std::optional<Variant> valueFrom(const CParameter& parameter, const std::string& text,
                                     const char* invalid);

    Attribute attribute(const char* name) const;
    /// Warns where the element does not have the attribute.
    Attribute required(const char* name, const char* missing);
    void warn(const std::string& line);

    Unit& unit_;
    xmlTextReader* reader_;
    CParameter* openOptionParameter = nullptr; ///< whose options are being read
    std::wstring* textTarget = nullptr;        ///< the report whose text is being read
    std::size_t warningsLeftOut_ = 0;
};

} // namespace solvane
