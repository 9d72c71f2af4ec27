// A library that is no tool: it lacks the entry point.

extern "C" __attribute__((visibility("default"))) int SomethingElse();
int SomethingElse() {
    return 0;
}
