// Starts the desktop program.
#include "desk/window/desk.h"

int main(int argc, char** argv) {
    return fenmark::desk::runDesk(argc, argv);
}
