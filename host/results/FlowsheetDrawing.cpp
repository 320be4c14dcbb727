#include "FlowsheetDrawing.h"

#include "HtmlText.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <set>

namespace solvane::host {

namespace {

// Lengths in pixels.
constexpr int leastBoxWidth = 130;
constexpr int leastBoxHeight = 56;
constexpr int portDistance = 28;
constexpr int leastStubLength = 70;
constexpr int rowGap = 40;
constexpr int laneDistance = 20;
constexpr int margin = 20;
constexpr int textRise = 5;
constexpr int arrowLength = 15;

/// At least the width of a text, in any font of the page.
int textWidth(std::string_view text) {
    int width = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isFirstByte = (byte & 0xC0) != 0x80;
        const bool isWide = byte >= 0x80 || std::string_view("MW@m%").find(c) != std::string_view::npos;
        const bool isCapital = 'A' <= c && c <= 'Z';
        width += !isFirstByte ? 0 : isWide ? 14 : isCapital ? 10 : 8;
    }
    return width;
}

/// What the longest names need. Between two columns lie the ends of products at the left, those of feeds at
/// the right, and the ways of recycles between them.
struct Spacing {
    int boxWidth = leastBoxWidth;
    int feedLength = leastStubLength;
    int productLength = leastStubLength;
    int recycles = 0;

    explicit Spacing(const RunResults& results) {
        std::set<std::string> made, given;
        const auto stubLength = [](const std::string& name) {
            return textWidth(name) + arrowLength + 2 * textRise;
        };
        for (const UnitResult& unit : results.units) {
            boxWidth = std::max(boxWidth, textWidth(unit.name) + 2 * textRise);
            for (const std::string& stream : unit.feeds)
                if (!made.contains(stream)) {
                    feedLength = std::max(feedLength, stubLength(stream));
                    given.insert(stream);
                }
            for (const std::string& stream : unit.products) {
                productLength = std::max(productLength, stubLength(stream));
                recycles += given.contains(stream) ? 1 : 0;
            }
            made.insert(unit.products.begin(), unit.products.end());
        }
    }
    int columnGap() const { return productLength + (2 * recycles + 1) * laneDistance + feedLength; }
    int columnX(std::size_t column) const {
        return margin + (recycles + 1) * laneDistance + feedLength +
               static_cast<int>(column) * (boxWidth + columnGap());
    }
};

struct Point {
    int x;
    int y;
};

struct Box {
    const UnitResult* unit = nullptr;
    std::size_t column = 0;
    int x = 0; ///< the columns begin after the room for the feeds
    int y = 0;

    int height() const {
        const auto ports = static_cast<int>(std::max(unit->feeds.size(), unit->products.size()));
        return std::max(leastBoxHeight, (ports + 1) * portDistance);
    }
    /// The place of the port among `count` ones on a side.
    int portY(std::size_t port, std::size_t count) const {
        return y + height() * static_cast<int>(port + 1) / static_cast<int>(count + 1);
    }
};

/// A unit stands in the column after those of the units that feed it.
std::vector<Box> placedBoxes(const RunResults& results, const Spacing& spacing) {
    std::vector<Box> boxes;
    std::map<std::string, std::size_t> columnAfter; // by stream
    std::map<std::size_t, int> bottom;              // by column
    for (const UnitResult& unit : results.units) {
        Box box{&unit};
        for (const std::string& feed : unit.feeds)
            box.column = std::max(box.column, columnAfter[feed]);
        for (const std::string& product : unit.products)
            columnAfter[product] = box.column + 1;
        box.x = spacing.columnX(box.column);
        box.y = bottom.try_emplace(box.column, margin).first->second;
        bottom[box.column] = box.y + box.height() + rowGap;
        boxes.push_back(box);
    }
    return boxes;
}

std::string attribute(const char* name, int value) {
    return std::string(" ") + name + "=\"" + std::to_string(value) + "\"";
}

std::string label(Point place, const char* anchor, const std::string& text) {
    return "<text" + attribute("x", place.x) + attribute("y", place.y) + " text-anchor=\"" + anchor + "\">" +
           htmlText(text) + "</text>\n";
}

/// A line from a stream's source through the lanes of the columns that it passes, from their left.
std::string line(Point from, const std::vector<Point>& lanes, int boxWidth, Point to) {
    const auto point = [](int x, int y) { return std::to_string(x) + "," + std::to_string(y) + " "; };
    std::string path = "M" + point(from.x, from.y);
    const auto curveTo = [&](Point next) {
        const int middle = (from.x + next.x) / 2;
        path += "C" + point(middle, from.y) + point(middle, next.y) + point(next.x, next.y);
    };
    for (const Point lane : lanes) {
        curveTo(lane);
        from = {lane.x + boxWidth, lane.y};
        path += "L" + point(from.x, from.y);
    }
    curveTo(to);
    return "<path class=\"stream\" d=\"" + path + "\"/>\n";
}

/// The room below the boxes of each column, where streams pass.
class Lanes {
public:
    Lanes(const std::vector<Box>& boxes, const Spacing& spacing) : spacing_(spacing) {
        for (const Box& box : boxes)
            bottom_[box.column] = std::max(bottom_[box.column], box.y + box.height());
    }

    /// A lane in each column between these two.
    std::vector<Point> between(std::size_t first, std::size_t last) {
        std::vector<Point> lanes;
        for (std::size_t column = first + 1; column < last; ++column)
            lanes.push_back({spacing_.columnX(column), bottom_[column] += laneDistance});
        return lanes;
    }

    int lowest() const { return bottom_.empty() ? 0 : std::ranges::max(std::views::values(bottom_)); }

private:
    const Spacing& spacing_;
    std::map<std::size_t, int> bottom_;
};

/// A recycle's line, which goes back below all boxes: the `number`th from inside.
std::string recycleLine(Point from, Point to, int number, int lane, const Spacing& spacing) {
    const int right = from.x + spacing.productLength + number * laneDistance;
    const int left = to.x - spacing.feedLength - number * laneDistance;
    const auto go = [](char command, int place) { return std::string(1, command) + std::to_string(place); };
    return "<path class=\"stream\" d=\"M" + std::to_string(from.x) + "," + std::to_string(from.y) +
           go('H', right) + go('V', lane) + go('H', left) + go('V', to.y) + go('H', to.x) + "\"/>\n";
}

/// Where a product leaves the unit that makes it.
struct Source {
    Point place;
    std::size_t column;
};

std::string boxSvg(const Box& box, int boxWidth, const RunResults& results) {
    const bool isWarned =
        std::ranges::find(results.warnings, box.unit->name, &Warning::unit) != results.warnings.end();
    const char* kind = box.unit->status == UnitStatus::failed ? "unit failed"
                       : isWarned                             ? "unit warned"
                                                              : "unit";
    return std::string("<rect class=\"") + kind + "\"" + attribute("x", box.x) + attribute("y", box.y) +
           attribute("width", boxWidth) + attribute("height", box.height()) + " rx=\"6\"/>\n" +
           label({box.x + boxWidth / 2, box.y + box.height() / 2 + textRise}, "middle", box.unit->name);
}

} // namespace

std::string flowsheetSvg(const RunResults& results) {
    const Spacing spacing(results);
    const std::vector<Box> boxes = placedBoxes(results, spacing);
    Lanes lanes(boxes, spacing);
    std::map<std::string, Source> sources; // of the products, until a unit takes them
    std::map<std::string, Point> given;    // the ports that take what no unit before makes
    std::string lines, rects;
    int width = 0;
    for (const Box& box : boxes) {
        const UnitResult& unit = *box.unit;
        for (std::size_t i = 0; i < unit.feeds.size(); ++i) {
            const Point port{box.x, box.portY(i, unit.feeds.size())};
            const auto source = sources.find(unit.feeds[i]);
            if (source == sources.end()) {
                given[unit.feeds[i]] = port;
                lines += label({port.x - arrowLength, port.y - textRise}, "end", unit.feeds[i]);
                continue;
            }
            const auto& [place, column] = source->second;
            lines += line(place, lanes.between(column, box.column), spacing.boxWidth, port) +
                     label({place.x + textRise, place.y - textRise}, "start", unit.feeds[i]);
            sources.erase(source);
        }
        for (std::size_t i = 0; i < unit.products.size(); ++i)
            sources[unit.products[i]] = {{box.x + spacing.boxWidth, box.portY(i, unit.products.size())},
                                         box.column};
        rects += boxSvg(box, spacing.boxWidth, results);
        width = std::max(width, box.x + spacing.boxWidth + spacing.columnGap());
    }
    int recycle = 0;
    for (const auto& [stream, source] : sources) {
        const Point from = source.place;
        const auto port = given.find(stream);
        if (port == given.end()) {
            lines += line(from, {}, 0, {from.x + spacing.productLength, from.y});
        } else {
            ++recycle;
            lines +=
                recycleLine(from, port->second, recycle, lanes.lowest() + recycle * laneDistance, spacing);
            given.erase(port);
        }
        lines += label({from.x + textRise, from.y - textRise}, "start", stream);
    }
    for (const auto& [stream, port] : given)
        lines += line({port.x - spacing.feedLength, port.y}, {}, 0, port);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" aria-label=\"Flowsheet\"" +
           attribute("width", width) + attribute("height", lanes.lowest() + recycle * laneDistance + margin) +
           "><defs><marker id=\"arrow\" viewBox=\"0 0 8 8\" refX=\"8\" refY=\"4\" markerWidth=\"8\" "
           "markerHeight=\"8\" orient=\"auto\"><path d=\"M0,0 8,4 0,8z\"/></marker></defs>\n" +
           lines + rects + "</svg>\n";
}

} // namespace solvane::host
