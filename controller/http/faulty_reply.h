#pragma once

#include <vector>

#include "controller/http/fault_plan.h"
#include "controller/model/reply.h"

namespace lamp::controller {

/// Spoils the document of a successful reply by those of the faults that are about documents:
/// truncated, garbage, wrong or no section, empty, oversize, deep, with a document type.
void spoilReply(const std::vector<Fault>& faults, Reply& reply);

}  // namespace lamp::controller
