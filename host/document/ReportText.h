#pragma once

#include <korvaneexchange/ApplyAnswer.h>
#include <korvaneexchange/ImportDocument.h>

#include <cstddef>
#include <string>

#include "host/system/Console.h"

/// What the program says of the reports of KorvaneExchange.
namespace host {

using korvane::exchange::AnswerReport;
using korvane::exchange::ImportReport;

/// Says what was done, and what was left out or changed. Every line begins with `what`, the name of what was
/// changed.
void SayImport(const ImportReport& report, const std::string& what, Console& console);
void SayUpdate(const ImportReport& report, const std::string& what, Console& console);
void SayAnswer(const AnswerReport& report, const std::string& what, Console& console);

/// Says only what of a document cannot be used, without the members that mean nothing or have no effect.
void SayLeftOut(const ImportReport& report, const std::string& what, Console& console);

/// How many values of the document had no effect, without those that every document has.
std::size_t CountSkipped(const korvane::exchange::Report& report);

}  // namespace host
