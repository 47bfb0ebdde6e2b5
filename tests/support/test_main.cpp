// The main function of every test program.
#include <gmock/gmock.h>

#include "platform/isolated_run.h"
#include "platform/program_start.h"

int main(int argc, char** argv) {
    velinor::runIsolatedWorkIfAsked(velinor::programArguments(argc, argv));
    const velinor::StandardStreams streams;
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
