// Skips: what a test may need and a system may not have. Each gives null where it's there, and the reason to skip the
// test where it isn't:
//
//   if (const char* reason = whyNoSymbolicLinks()) GTEST_SKIP() << reason;
#pragma once

namespace tessera::testing_support {

// Links that the standard library makes and sees.
const char* whyNoSymbolicLinks();

// A backslash or a colon is a character of a name like any other.
const char* whyNoOddNames();

// Names that differ in case alone are two files.
const char* whyNoCaseInNames();

// Variables of the environment that name the language of the user.
const char* whyNoLanguageInVariables();

// A process that may not make files longer than it says; see FileSizeLimit.
const char* whyNoFileSizeLimit();

} // namespace tessera::testing_support
