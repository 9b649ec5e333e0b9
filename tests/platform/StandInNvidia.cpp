// A management library with two cards. It writes one letter for each call into the file that the environment variable
// STANDIN_NVIDIA_LOG names, because a card that sleeps must not get any.

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

unsigned firstCard = 63; // percent
unsigned secondCard = 30;

void note(char call) {
    if (std::FILE* log = std::fopen(std::getenv("STANDIN_NVIDIA_LOG"), "a")) {
        std::fputc(call, log);
        std::fclose(log);
    }
}

} // namespace

extern "C" {

struct StandInUtilisation {
    unsigned gpu;
    unsigned memory;
};

/// Fails at its first call, as before the driver is loaded.
int nvmlInit_v2() {
    static int calls = 0;
    note('i');
    return calls++ == 0 ? 9 : 0;
}

int nvmlShutdown() {
    note('s');
    return 0;
}

int nvmlDeviceGetHandleByPciBusId_v2(const char* address, void** device) {
    note('d');
    *device = std::strcmp(address, "0000:01:00.0") == 0 ? &firstCard : &secondCard;
    return 0;
}

/// The first card is busy at the first call, idle at all later ones.
int nvmlDeviceGetUtilizationRates(void* device, StandInUtilisation* utilisation) {
    note('u');
    *utilisation = {*static_cast<unsigned*>(device), 5U};
    firstCard = device == &firstCard ? 0 : firstCard;
    return 0;
}
}
