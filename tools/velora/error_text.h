// Errors of tables, as text and as JSON.
//
// Room: tools. Values only; nothing fails.
#pragma once

#include <string>

#include "authoring/table_error.h"
#include "tools/velora/files.h"

namespace velora::tools {

// "CIE76 mean 0.485, p95 1.19, p99 1.75, max 4.28".
std::string FiguresText(const char* name, const authoring::ErrorFigures& figures);
// All of a table's figures in a line; "no loss".
std::string ErrorsText(const authoring::TableErrors& errors);
// "ciede2000", "cie76" and "ink", each with mean, p95, p99 and max; "ink_sum".
Json ErrorsJson(const authoring::TableErrors& errors);

}  // namespace velora::tools
