// A library to preload: a system in which things hang or fail.
//
// While a file of that name is in the folder FAULTS:
//   "home hangs"  the question for a volume's space gets no answer, as on a network volume whose server is gone
//   "no threads"  no thread can be made, as at the limit of RLIMIT_NPROC
//
// Of the system calls on the files of one folder, and on it:
//   FAILING_FOLDER  the folder
//   FAILING_CALL    the call's name: open, write, fdatasync, fchmod, rename, link, unlink; or "any"
//   FAILING_AT      which of these calls fails, counted from 1; 0: none
//   FAILING_ERROR   errno's number
//   FAILING_ON      "once", or "always" from that call on
//   FAILING_COUNT   a file that gets a byte for each such call

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::string variable(const char* name) {
    const char* const value = ::getenv(name);
    return value ? value : "";
}

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool has(const char* fault) {
    const std::string folder = variable("FAULTS");
    return !folder.empty() && ::access((folder + '/' + fault).c_str(), F_OK) == 0;
}

bool isInFolder(const char* path) {
    static const std::string folder = variable("FAILING_FOLDER");
    return !folder.empty() && path && std::strncmp(path, folder.c_str(), folder.size()) == 0;
}

bool isInFolder(int file) {
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    std::string path(4096, '\0');
    return ::readlink(link.c_str(), path.data(), path.size() - 1) > 0 && isInFolder(path.c_str());
}

/// Counts this call; whether it has to fail. Sets errno then.
bool fails(const char* call) {
    static const std::string chosen = variable("FAILING_CALL");
    static const int place = std::atoi(variable("FAILING_AT").c_str());
    static const bool always = variable("FAILING_ON") == "always";
    static const int error = std::atoi(variable("FAILING_ERROR").c_str());
    static const std::string count = variable("FAILING_COUNT");
    static std::atomic<int> calls = 0;
    if (chosen != "any" && chosen != call)
        return false;
    if (!count.empty()) {
        const long file = ::syscall(SYS_openat, AT_FDCWD, count.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        ::syscall(SYS_write, file, ".", 1);
        ::syscall(SYS_close, file);
    }
    const int here = ++calls;
    if (place == 0 || here < place || (here > place && !always))
        return false;
    errno = error;
    return true;
}

template <typename... Arguments>
int opened(const char* name, const char* path, int flags, mode_t mode) {
    if ((flags & (O_WRONLY | O_RDWR)) != 0 && isInFolder(path) && fails("open"))
        return -1;
    return next<int(const char*, int, mode_t)>(name)(path, flags, mode);
}

bool haveMode(int flags) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0;
}

} // namespace

extern "C" {

int statvfs64(const char* path, struct statvfs64* volume) noexcept {
    while (has("home hangs"))
        ::usleep(10'000);
    return next<int(const char*, struct statvfs64*)>("statvfs64")(path, volume);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    return has("no threads") ? EAGAIN
                             : next<decltype(pthread_create)>("pthread_create")(thread, attributes, start, argument);
}

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = haveMode(flags) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return opened("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = haveMode(flags) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return opened("open64", path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t size) {
    if (isInFolder(file) && fails("write"))
        return -1;
    return next<ssize_t(int, const void*, size_t)>("write")(file, bytes, size);
}

int fdatasync(int file) {
    if (isInFolder(file) && fails("fdatasync"))
        return -1;
    return next<int(int)>("fdatasync")(file);
}

int fchmod(int file, mode_t mode) {
    if (isInFolder(file) && fails("fchmod"))
        return -1;
    return next<int(int, mode_t)>("fchmod")(file, mode);
}

int rename(const char* from, const char* to) {
    if (isInFolder(to) && fails("rename"))
        return -1;
    return next<int(const char*, const char*)>("rename")(from, to);
}

int link(const char* from, const char* to) {
    if (isInFolder(to) && fails("link"))
        return -1;
    return next<int(const char*, const char*)>("link")(from, to);
}

int unlink(const char* path) {
    if (isInFolder(path) && fails("unlink"))
        return -1;
    return next<int(const char*)>("unlink")(path);
}

} // extern "C"
