#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lamp::controller {

/// Why a command was not carried out: the HTTP status to answer with and a text that says what is
/// wrong, where, and what to do.
struct Refusal {
  int status = 400;
  std::string text;
};

/// Empty when there is nothing to object to.
using Objection = std::optional<Refusal>;

/// A refusal of a document that can't be understood (400).
Refusal malformed(std::string text);

/// A refusal of a value or of a combination of values (422); the text says that nothing changed.
Refusal unacceptable(std::string_view where, std::string_view what);

/// `value` between double quotes, cut at 60 characters so that an error text stays readable, with
/// control characters shown as "?".
std::string quoted(std::string_view value);

}  // namespace lamp::controller
