// Preloaded into the program: a system in which things hang or fail while a file of that name is in the folder FAULTS.

#include <cerrno>
#include <cstdlib>
#include <string>

#include <dlfcn.h>
#include <pthread.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

bool has(const char* fault) {
    const char* folder = std::getenv("FAULTS");
    return folder != nullptr && ::access((std::string(folder) + '/' + fault).c_str(), F_OK) == 0;
}

template <typename Function>
Function systems(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

/// As on a network volume whose server is gone.
int statvfs(const char* path, struct statvfs* volume) noexcept {
    while (has("home hangs"))
        ::usleep(10'000);
    return systems<decltype(&statvfs)>("statvfs64")(path, volume);
}

/// As at the limit of RLIMIT_NPROC.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    if (has("no threads"))
        return EAGAIN;
    return systems<decltype(&pthread_create)>("pthread_create")(thread, attributes, start, argument);
}

} // extern "C"
