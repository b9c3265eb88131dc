// What the test colour-algorithm library (libvexa-algo.so) computes and counts, for the tests
// that load it beside the parser library.
//
// Merges: every gamut entry's output is the left output plus the right output, component by
// component, with the left input point; the entry count is the left one. Every PCC coefficient
// is the left coefficient plus the right one.
#ifndef VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_
#define VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_

#include <cstdint>

// Set to one of the words below to make the library misbehave on purpose.
constexpr char kTestAlgoBehaviourVariable[] = "VEXA_TEST_ALGO_BEHAVIOUR";
constexpr char kTestAlgoNoInterface[] = "no-interface";  // the factory returns null
constexpr char kTestAlgoInitFails[] = "init-fails";      // Init returns kTestAlgoInitError
constexpr int32_t kTestAlgoInitError = -5;

struct TestAlgoCounters {
  int32_t factory_calls;
  int32_t objects_alive;
  int32_t inits;
  int32_t deinits;
  int32_t gamut_merges;
  int32_t pcc_merges;
};

// Exported by the library beside GetVexaAlgoInterface.
constexpr char kTestAlgoCountersSymbol[] = "VexaTestAlgoCounters";
using TestAlgoCountersFunction = TestAlgoCounters (*)();

#endif  // VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_
