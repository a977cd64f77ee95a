#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "host/xml/xml_document.h"
#include "workbench/wire/secret_pattern.h"

namespace workbench {

/// The secrets that went to or came from one controller, to be kept out of what its program shows
/// and keeps.
class Secrets {
 public:
  /// A shorter one is part of ordinary words and is masked only as the value of a known name.
  static constexpr std::size_t LeastCharacters = 6;
  /// So many are looked for, the latest, ...
  static constexpr std::size_t MostSecrets = 32;
  /// ... and of each so much, in bytes of UTF-8.
  static constexpr std::size_t MostBytes = 1'024;

  /// Takes up the values of URI parameters, percent-encoded, that have a secret's name.
  void learnParameters(std::string_view parameters);
  /// Takes up the values of attributes and elements that have a secret's name.
  void learnDocument(const XmlDocument& document);

  /// Free text with the secrets in it replaced by "***", in whatever spelling (see SecretPattern);
  /// with @p cut, what at its end may be the beginning of one is left out. What stands under a
  /// secret's name (see findNamedSecrets) is masked also where it is unknown.
  std::string masked(std::string_view text, bool cut = false) const;

  /// What is looked for in the values of documents: passwords of LeastCharacters and more.
  std::vector<SecretPattern> passwordPatterns() const;

 private:
  struct Secret {
    std::string value;
    bool isPassword;
  };
  void add(std::string_view value, bool isPassword);
  void learnElement(const XmlDocument::XmlNode& element);

  std::deque<Secret> secrets_;  // the latest one last
};

/// URI parameters with the values of those that have a secret's name replaced by "***", unless they
/// are empty.
std::string maskedParameters(std::string_view parameters);

}  // namespace workbench
