#pragma once

#include <QtCore/QString>

#include "workbench/page_values.h"

namespace editor {

/// What became of values that were put into a page, with the first of those that it refused, in the
/// language of the editor.
QString putReportText(const workbench::PutReport& report);

}  // namespace editor
