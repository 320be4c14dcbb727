/// Plots of a study, as scripts for gnuplot.
#pragma once

#include "StudyTable.h"

#include <string>
#include <string_view>

namespace solvane::host {

struct StudyPlot {
    std::size_t column = 0; ///< of the table: what is shown over the variables
    std::string terminal{}; ///< of gnuplot: "svg" or "png"
};

/// Chooses what a plot shows: the column of that name, or without a name the first result, in the format of
/// the file's extension. False with a text if the study or the file cannot have a plot.
[[nodiscard]] bool choosePlot(const StudyTable& table, const Design& design, const std::string& name,
                              const std::string& file, StudyPlot& plot, std::string& error);

/// The script, with its data in it, which prints the picture to gnuplot's standard output: lines over one
/// variable, and for two a family of lines, contours of a large grid, or coloured points. Points that failed
/// are left out.
std::string plotScript(const StudyTable& table, const Design& design, std::string_view csv,
                       const StudyPlot& plot);

} // namespace solvane::host
