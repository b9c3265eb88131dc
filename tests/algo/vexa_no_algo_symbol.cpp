// A library that is found under the algorithm library's name but lacks its factory.
extern "C" __attribute__((visibility("default"))) int VexaNotTheAlgoFactory() { return 0; }
