#pragma once

#include <string_view>
#include <vector>

#include "workbench/wire/secret_pattern.h"

namespace workbench {

/// Finds the values of attributes, elements, parameters and members with a secret's name in free
/// text (`FTPPwd="..."`, `<FTPPwd>...</FTPPwd>`, `ftpPassword=...`, `"FTPPwd":"..."`, escaped or
/// not) and appends where they stand. Where a value has no end of its own, it ends in front of a
/// blank or a delimiter, or behind one of @p known that stands there. Empty values are left out.
/// Costs time in proportion to the text.
void findNamedSecrets(std::string_view text, const std::vector<SecretPattern>& known,
                      std::vector<TextSpan>& found);

}  // namespace workbench
