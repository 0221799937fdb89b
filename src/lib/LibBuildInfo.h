// What this build of Quickstep is: its version, the commit it was built from,
// the compiler and the flags, so that results of different builds can be told
// apart.
#ifndef LIB_BUILD_INFO_H
#define LIB_BUILD_INFO_H

// "1.2.2"
const char* LibBuildVersion();
// The git commit ("17f6b0a1c2d3", "-dirty" when the tree had changes), or
// "unknown" for a build outside a git checkout.
const char* LibBuildCommit();
// "GNU 12.2.0"
const char* LibBuildCompiler();
// The compiler flags of the build type, sanitizers included.
const char* LibBuildFlags();
// What tells runs of two builds apart: "1.2.2 (commit 17f6b0a1c2d3)".
const char* LibBuildIdentity();
// One line for --version: "quickstep-cli 1.2.2 (commit 17f6b0a1c2d3, GNU 12.2.0)".
const char* LibBuildLine(const char* program);

#endif // LIB_BUILD_INFO_H
