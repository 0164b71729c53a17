#include <signal.h>

#include "Program.hpp"

int main(int argc, char** argv)
{
    signal(SIGPIPE, SIG_IGN);  // a reader of our output that leaves is seen by the write
    ZorvCtl::Interruption interruption;
    const ZorvCtl::CtrlC ctrlC(interruption);
    return ZorvCtl::run({argv + 1, argv + argc}, ZorvCtl::Console::ofProcess(), interruption);
}
