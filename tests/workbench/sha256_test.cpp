#include "workbench/sha256.h"

#include <gtest/gtest.h>

namespace {

using workbench::certificateFingerprint;

// One of the standard's examples, whole and in pieces.
TEST(Sha256, IsWrittenInSmallHexadecimalDigits) {
  constexpr const char* Digest = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
  EXPECT_EQ(workbench::sha256Text("abc"), Digest);
  workbench::Sha256 pieces;
  pieces.add("a");
  pieces.add("");
  pieces.add("bc");
  EXPECT_EQ(pieces.text(), Digest);
}

TEST(Sha256, WhatIsNoCertificateHasNoFingerprint) {
  for (const char* text :
       {"", "abc", "-----BEGIN CERTIFICATE-----", "-----BEGIN CERTIFICATE-----\nYWJj\n",
        "-----BEGIN CERTIFICATE-----\nYWJj\n-----END CERTIFICATE-----\n"})
    EXPECT_EQ(certificateFingerprint(text), "") << text;
}

}  // namespace
