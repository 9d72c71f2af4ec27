#include "suite/programs/outside/OutsideProgram.h"

int main(int argc, char** argv) {
    return suite::RunOutsideProgram("Level Book", argc, argv);
}
