#pragma once

#include "tools/vorlen-monitor-viewer/monitors.h"
#include "tools/vorlen-monitor/doctor/finding.h"

#include <cstdint>
#include <string>
#include <vector>

// Texts of several lines in UTF-8, whose lines end with line feeds.
namespace vorlen::viewer {

// The record of the monitor (null: a sentence that the desktop has no monitor), the findings about
// it, and those about the whole desktop. Without findings (null) only the first.
std::string detailsText(const ViewedMonitor* monitor, const std::vector<tool::Finding>* findings);

// The code of the check with its name and texts.
std::string statusText(std::int32_t code);

} // namespace vorlen::viewer
