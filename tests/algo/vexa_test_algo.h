// The test colour-algorithm library (libvexa-algo.so): the algorithm double of the unit tests,
// with its merge framing checked, behind the library's factory, plus counters that tests read
// while the library is loaded.
#ifndef VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_
#define VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_

#include <cstdint>

// Set to one of the words below to make the library misbehave on purpose.
constexpr char kTestAlgoBehaviourVariable[] = "VEXA_TEST_ALGO_BEHAVIOUR";
constexpr char kTestAlgoNoInterface[] = "no-interface";  // the factory returns null
constexpr char kTestAlgoInitFails[] = "init-fails";      // Init returns kTestAlgoInitError
constexpr int32_t kTestAlgoInitError = -5;

// Totals over every object the library made since it was loaded.
struct TestAlgoCounters {
  int32_t factory_calls;
  int32_t objects_alive;
  int32_t inits;
  int32_t deinits;
  int32_t gamut_merges;
  int32_t pcc_merges;
  int32_t framing_errors;
};

// Exported by the library beside GetVexaAlgoInterface.
constexpr char kTestAlgoCountersSymbol[] = "VexaTestAlgoCounters";
using TestAlgoCountersFunction = TestAlgoCounters (*)();

#endif  // VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_
