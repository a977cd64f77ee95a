#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// @p xml, the text of a document, with the passwords in it replaced by "***": the attributes and
/// elements FTPPwd, mailPassword and ftpPassword. Empty ones stay empty.
std::string maskedXml(std::string xml);

/// URI parameters with the value of `ftpPassword` replaced by "***", unless it is empty.
std::string maskedParameters(std::string_view parameters);

}  // namespace workbench
