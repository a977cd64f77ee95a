#pragma once

#include <string>
#include <string_view>

#include "host/services/services.h"

namespace workbench {

/// @p xml, the text of a document, with the passwords in it replaced by "***": the attributes and
/// elements FTPPwd, mailPassword and ftpPassword. Empty ones stay empty.
std::string maskedXml(std::string xml);

/// Whether an attribute or element of this name holds a password.
bool isPasswordName(std::string_view name);

/// URI parameters with the value of `ftpPassword` replaced by "***", unless it is empty.
std::string maskedParameters(std::string_view parameters);

/// What a controller answered to @p request as an error, with the passwords of the request, should
/// it have repeated them, replaced by "***". Passwords of one or two characters stay: they are part
/// of any text.
XCBasicString maskedError(const XCBasicString& error, const host::ExchangeRequest& request);

}  // namespace workbench
