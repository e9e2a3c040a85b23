// The groups of cases, each in a source file of its own.
#pragma once

namespace zorl2_bench {

void RegisterEntryCases();
void RegisterStateCases();
void RegisterSmallCases();
void RegisterCheckCases();

}  // namespace zorl2_bench
