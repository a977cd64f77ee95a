#include "host/xml/keyed_hash.h"

#include <algorithm>
#include <bit>
#include <random>

#include "host/xml/xml_bytes.h"

namespace host::xml {
namespace {

struct State {
  std::uint64_t a, b, c, d;

  void mix() {
    a += b;
    b = std::rotl(b, 13) ^ a;
    a = std::rotl(a, 32);
    c += d;
    d = std::rotl(d, 16) ^ c;
    a += d;
    d = std::rotl(d, 21) ^ a;
    c += b;
    b = std::rotl(b, 17) ^ c;
    c = std::rotl(c, 32);
  }

  void take(std::uint64_t word) {
    d ^= word;
    mix();
    a ^= word;
  }
};

std::uint64_t drawn() {
  static_assert(sizeof(std::random_device::result_type) == 4);
  std::random_device source;
  return std::uint64_t(source()) << 32 | source();
}

}  // namespace

KeyedHash::KeyedHash() : KeyedHash(drawn(), drawn()) {}

std::size_t KeyedHash::operator()(std::string_view text) const {
  State state{first_ ^ 0x736F6D6570736575U, second_ ^ 0x646F72616E646F6DU,
              first_ ^ 0x6C7967656E657261U, second_ ^ 0x7465646279746573U};
  std::uint64_t last = std::uint64_t(text.size()) << 56;
  for (; text.size() >= WordBytes; text.remove_prefix(WordBytes)) state.take(loadWord(text.data()));
  char rest[WordBytes] = {};
  std::copy(text.begin(), text.end(), rest);
  state.take(last | loadWord(rest));
  state.c ^= 0xFF;
  for (int i = 0; i < 3; ++i) state.mix();
  return static_cast<std::size_t>(state.a ^ state.b ^ state.c ^ state.d);
}

}  // namespace host::xml
