#include "workbench/wire/secrets.h"

#include <algorithm>

#include "workbench/wire/named_secrets.h"
#include "workbench/wire/secret_names.h"
#include "workbench/wire/uri_parameters.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::size_t characterCount(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return !isContinuation(c); }));
}

// At most so many bytes, never a part of a character.
std::string_view beginningOf(std::string_view utf8, std::size_t most) {
  if (utf8.size() <= most) return utf8;
  while (most > 0 && isContinuation(utf8[most])) --most;
  return utf8.substr(0, most);
}

// A long secret in pieces that each may be masked: none is shorter than what is looked for.
void addPatterns(std::string_view secret, std::vector<SecretPattern>& patterns) {
  while (secret.size() > SecretPattern::MostBytes) {
    const std::string_view piece = beginningOf(secret, SecretPattern::MostBytes);
    if (piece.empty()) return;
    patterns.emplace_back(piece);
    // The last piece begins in the one before.
    std::size_t next = std::min(piece.size(), secret.size() - SecretPattern::MostBytes);
    while (isContinuation(secret[next])) ++next;
    secret.remove_prefix(next);
  }
  if (!secret.empty()) patterns.emplace_back(secret);
}

// Neighbours become one, in order.
void join(std::vector<TextSpan>& spans) {
  std::sort(spans.begin(), spans.end(),
            [](const TextSpan& a, const TextSpan& b) { return a.from < b.from; });
  std::size_t kept = 0;
  for (const TextSpan& span : spans) {
    if (kept > 0 && span.from <= spans[kept - 1].to)
      spans[kept - 1].to = std::max(spans[kept - 1].to, span.to);
    else
      spans[kept++] = span;
  }
  spans.resize(kept);
}

std::string replaced(std::string_view text, const std::vector<TextSpan>& spans) {
  std::string out;
  std::size_t written = 0;
  for (const TextSpan& span : spans) {
    out += text.substr(written, span.from - written);
    out += SecretMask;
    written = span.to;
  }
  return out += text.substr(written);
}

}  // namespace

void Secrets::add(std::string_view value, bool isPassword) {
  value = beginningOf(value, MostBytes);
  if (value.empty() || value == SecretMask) return;
  const auto known = std::find_if(secrets_.begin(), secrets_.end(),
                                  [&](const Secret& secret) { return secret.value == value; });
  if (known != secrets_.end()) {
    isPassword = isPassword || known->isPassword;
    secrets_.erase(known);
  }
  secrets_.push_back({std::string(value), isPassword});
  if (secrets_.size() > MostSecrets) secrets_.pop_front();
}

void Secrets::learnParameters(std::string_view parameters) {
  for (const UriParameter& parameter : uriParameters(parameters))
    if (const std::string name = percentDecoded(parameter.name); isSecretName(name))
      add(percentDecoded(parameter.value), isPasswordName(name));
}

void Secrets::learnElement(const Node& element) {
  for (std::size_t i = 0; i < element.attributeCount(); ++i)
    if (const std::string_view name = element.attributeName(i).text(); isSecretName(name))
      add(element.attributeText(i).toString().ToUtf8(), isPasswordName(name));
  if (isSecretName(element.Tag())) add(element.Text().ToUtf8(), isPasswordName(element.Tag()));
  for (const Node& child : element.Children()) learnElement(child);
}

void Secrets::learnDocument(const XmlDocument& document) {
  if (document.Root() != nullptr) learnElement(*document.Root());
}

std::vector<SecretPattern> Secrets::passwordPatterns() const {
  std::vector<SecretPattern> patterns;
  for (const Secret& secret : secrets_)
    if (secret.isPassword && characterCount(secret.value) >= LeastCharacters)
      addPatterns(secret.value, patterns);
  return patterns;
}

std::string Secrets::masked(std::string_view text, bool cut) const {
  std::vector<SecretPattern> all;
  std::vector<SecretPattern> anywhere;
  for (const Secret& secret : secrets_) {
    addPatterns(secret.value, all);
    if (characterCount(secret.value) >= LeastCharacters) addPatterns(secret.value, anywhere);
  }
  std::vector<TextSpan> spans;
  if (cut) {
    std::size_t end = text.size();
    for (const SecretPattern& pattern : anywhere) end = std::min(end, pattern.beginningAtEnd(text));
    text = text.substr(0, end);
  }
  findNamedSecrets(text, all, spans);
  for (const SecretPattern& pattern : anywhere) pattern.find(text, spans);
  join(spans);
  return replaced(text, spans);
}

std::string maskedParameters(std::string_view parameters) {
  std::vector<TextSpan> spans;
  for (const UriParameter& parameter : uriParameters(parameters)) {
    if (parameter.value.empty() || !isSecretName(percentDecoded(parameter.name))) continue;
    const auto from = static_cast<std::size_t>(parameter.value.data() - parameters.data());
    spans.push_back({from, from + parameter.value.size()});
  }
  return replaced(parameters, spans);
}

}  // namespace workbench
