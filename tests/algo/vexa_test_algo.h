// The test colour-algorithm library (libvexa-algo.so): the algorithm double of the unit tests,
// with its merge framing checked, behind the library's factory.
#ifndef VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_
#define VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_

// Set to one of the words below to make the library misbehave on purpose.
constexpr char kTestAlgoBehaviourVariable[] = "VEXA_TEST_ALGO_BEHAVIOUR";
constexpr char kTestAlgoNoInterface[] = "no-interface";  // the factory returns null
constexpr char kTestAlgoInitFails[] = "init-fails";      // Init returns -5

#endif  // VEXA_TESTS_ALGO_VEXA_TEST_ALGO_H_
