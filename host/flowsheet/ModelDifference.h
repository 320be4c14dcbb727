/// Models as lines of text, and what differs between two of them.
#pragma once

#include "ModelDescription.h"

#include <string>
#include <vector>

namespace solvane::host {

/// A part of a model, such as its parameters or its script, line by line.
struct ModelSection {
    std::string title;
    std::vector<std::string> lines;
};

/// The whole model. A file with other bytes than those of a text is one line with its size and checksum.
std::vector<ModelSection> modelSections(const ModelDescription& description);

/// The sections as one text.
std::string sectionsText(const std::vector<ModelSection>& sections);

/// What differs, section by section: lines of the left model after "-", of the right one after "+", with
/// their numbers. Empty for equal models.
std::string modelDifference(const std::vector<ModelSection>& left, const std::vector<ModelSection>& right);

} // namespace solvane::host
