#pragma once

#include <array>
#include <string_view>

namespace workbench {

/// What stands in the place of a secret wherever it is shown or kept.
inline constexpr std::string_view SecretMask = "***";

/// The names under which secrets travel: attributes, elements and URI parameters of exchanges, and
/// the controls that edit them. The one list for every program.
inline constexpr std::array<std::string_view, 4> SecretNames = {"ftpPassword", "FTPPwd",
                                                                "mailPassword", "mailUser"};

/// Whether what has this name holds a secret.
bool isSecretName(std::string_view name);

/// Whether the secret of this name is looked for in other values of a document, too. The account of
/// a mail server is not: it is an address that other fields may hold in their own right.
bool isPasswordName(std::string_view name);

}  // namespace workbench
