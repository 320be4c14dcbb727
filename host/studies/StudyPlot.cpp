#include "StudyPlot.h"

#include "cases/NameList.h"
#include "cases/ParameterRules.h"
#include "results/CsvText.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <map>
#include <optional>
#include <set>

namespace solvane::host {

namespace {

using Source = StudyColumn::Source;

/// A family of more lines cannot be told apart.
constexpr std::size_t mostLines = 8;

struct Format {
    std::string_view extension;
    const char* terminal; ///< with its options
};

constexpr std::array formats{
    Format{".svg", "svg size 800,560 font 'sans-serif,14' background 'white' noenhanced"},
    Format{".png", "pngcairo size 1200,840 font 'sans-serif,14' noenhanced"},
};

bool isResult(const StudyColumn& column) {
    return column.source == Source::parameter || column.source == Source::stream ||
           column.source == Source::fraction;
}

/// In gnuplot's quotes.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text)
        result.append(c == '\'' ? 2 : 1, c);
    return result + "'";
}

// Black labels are legible on the first, and all points of the second on white.
constexpr char areaPalette[] =
    "set palette defined (0 '#ffffe5', 1 '#fee391', 2 '#fec44f', 3 '#fe9929', 4 '#ec7014')\n";
constexpr char pointPalette[] =
    "set palette defined (0 '#440154', 1 '#3b528b', 2 '#21918c', 3 '#5ec962', 4 '#d8c70e')\n";

/// A point that succeeded: the values of the axes and of the column.
struct PlotPoint {
    std::vector<std::string> axes;
    std::string value;
};

std::vector<PlotPoint> plotPoints(const Design& design, std::string_view csv, std::size_t column) {
    constexpr std::size_t firstAxis = 2; // after the point's number and the count
    std::vector<PlotPoint> points;
    const auto lines = readCsv(csv);
    for (std::size_t i = 1; i < lines.size(); ++i)
        if (!lines[i].at(column).empty())
            points.push_back(
                {{lines[i].begin() + firstAxis,
                  lines[i].begin() + firstAxis + static_cast<std::ptrdiff_t>(design.axes.size())},
                 lines[i][column]});
    return points;
}

/// The distinct texts of an axis, in the order of the design.
std::vector<std::string> levelsOf(const Design& design, std::size_t axis) {
    std::vector<std::string> levels;
    std::set<std::string> seen;
    for (const Point& point : design.points)
        if (seen.insert(point[axis]).second)
            levels.push_back(point[axis]);
    return levels;
}

bool isSmaller(const std::string& left, const std::string& right) {
    return std::strtod(left.c_str(), nullptr) < std::strtod(right.c_str(), nullptr);
}

/// One line for each level of the axis `family`, or a single one without a title.
std::string linesScript(const Design& design, const std::vector<PlotPoint>& points, std::size_t x,
                        std::optional<std::size_t> family) {
    const std::vector<std::string> levels = family ? levelsOf(design, *family) : std::vector<std::string>{""};
    std::string data, plot;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        std::vector<PlotPoint> line;
        std::ranges::copy_if(points, std::back_inserter(line), [&](const PlotPoint& point) {
            return !family || point.axes[*family] == levels[i];
        });
        std::ranges::stable_sort(line, isSmaller, [&](const PlotPoint& point) { return point.axes[x]; });
        const std::string name = "$line" + std::to_string(i + 1);
        data += name + " << EOD\n";
        for (const PlotPoint& point : line)
            data += point.axes[x] + " " + point.value + "\n";
        data += "EOD\n";
        plot += (i == 0 ? "plot " : ", ") + name + " using 1:2 with linespoints pointtype 7 pointsize 0.5 " +
                (family ? "title " + quoted(levels[i]) : std::string("notitle"));
    }
    const std::string key =
        family ? "set key outside right top title " + quoted(design.axes[*family].title()) + "\n" : "";
    return key + data + plot + "\n";
}

/// A grid in blocks, one for each level of the first axis.
std::string contourScript(const Design& design, const std::vector<PlotPoint>& points) {
    std::map<std::pair<std::string, std::string>, std::string> values;
    for (const PlotPoint& point : points)
        values[{point.axes[0], point.axes[1]}] = point.value;
    std::string data = "$grid << EOD\n";
    for (const std::string& first : levelsOf(design, 0)) {
        for (const std::string& second : levelsOf(design, 1)) {
            const auto value = values.find({first, second});
            data += first + " " + second + " " + (value == values.end() ? "NaN" : value->second) + "\n";
        }
        data += "\n";
    }
    return areaPalette + data +
           "EOD\n"
           "set autoscale fix\n"
           "set view map\n"
           "set pm3d map explicit\n"
           "set contour base\n"
           "set cntrparam levels auto 10\n"
           "set cntrlabel onecolor format '%.4g'\n"
           "splot $grid using 1:2:3 with pm3d notitle, "
           "'' using 1:2:3 with lines linecolor 'black' nosurface notitle, "
           "'' using 1:2:3 with labels nosurface notitle\n";
}

std::string colourScript(const std::vector<PlotPoint>& points) {
    std::string data = "$points << EOD\n";
    for (const PlotPoint& point : points)
        data += point.axes[0] + " " + point.axes[1] + " " + point.value + "\n";
    return pointPalette + data + "EOD\nplot $points using 1:2:3 with points pointtype 7 palette notitle\n";
}

/// How two variables are shown.
struct Picture {
    std::optional<std::size_t> family{}; ///< the axis of a family of lines
    bool isGrid = false;
};

Picture pictureOf(const Design& design) {
    const std::size_t first = levelsOf(design, 0).size();
    const std::size_t second = levelsOf(design, 1).size();
    const bool isGrid = first * second == design.points.size();
    const std::size_t fewer = first < second ? 0 : 1;
    for (const std::size_t axis : {fewer, 1 - fewer})
        if (!isNumeric(design.axes[axis]))
            return {axis, isGrid};
    if (isGrid && std::min(first, second) <= mostLines)
        return {fewer, isGrid};
    return {std::nullopt, isGrid};
}

std::string axisSettings(const Axis& axis, const char* name) {
    return "set " + std::string(name) + "label " + quoted(axis.title()) + "\n" +
           (axis.isLogarithmic ? "set logscale " + std::string(name) + "\n" : "");
}

} // namespace

bool choosePlot(const StudyTable& table, const Design& design, const std::string& name,
                const std::string& file, StudyPlot& plot, std::string& error) {
    const auto fail = [&](const std::string& text) {
        error = "--plot: " + text;
        return false;
    };
    if (design.axes.size() > 2)
        return fail("a plot shows one or two variables; the study has " + std::to_string(design.axes.size()));
    if (std::ranges::none_of(design.axes, isNumeric))
        return fail("no variable of the study has numbers");
    const auto format =
        std::ranges::find_if(formats, [&](const Format& one) { return file.ends_with(one.extension); });
    if (format == formats.end())
        return fail("expected a file with the extension .svg or .png");
    plot.terminal = format->terminal;
    const std::vector<StudyColumn>& columns = table.columns();
    const auto isShown = [&](const StudyColumn& one) {
        return name.empty() ? one.source == Source::parameter : isResult(one) && isSameName(one.name, name);
    };
    const auto column = std::ranges::find_if(columns, isShown);
    if (column != columns.end()) {
        plot.column = static_cast<std::size_t>(column - columns.begin());
        return true;
    }
    std::vector<std::string> results;
    for (const StudyColumn& one : columns)
        if (isResult(one))
            results.push_back(one.name);
    return fail(name.empty()
                    ? "the case has no output parameter; choose a result with --plot-of: " + nameList(results)
                    : unknownName("result", name, results));
}

std::string plotScript(const StudyTable& table, const Design& design, std::string_view csv,
                       const StudyPlot& plot) {
    const std::vector<PlotPoint> points = plotPoints(design, csv, plot.column);
    const std::string value = quoted(table.columns()[plot.column].title());
    std::string script = "set encoding utf8\nset terminal " + plot.terminal + "\nset grid\n";
    const Picture picture = design.axes.size() == 2 ? pictureOf(design) : Picture{};
    if (design.axes.size() == 1 || picture.family) {
        const std::size_t x = picture.family ? 1 - *picture.family : 0;
        return script + axisSettings(design.axes[x], "x") + "set ylabel " + value + "\n" +
               linesScript(design, points, x, picture.family);
    }
    script +=
        axisSettings(design.axes[0], "x") + axisSettings(design.axes[1], "y") + "set cblabel " + value + "\n";
    return script + (picture.isGrid ? contourScript(design, points) : colourScript(points));
}

} // namespace solvane::host
