// A library that is no tool.

extern "C" __attribute__((visibility("default"))) int NothingThatAHostLooksFor();
int NothingThatAHostLooksFor() {
    return 0;
}
