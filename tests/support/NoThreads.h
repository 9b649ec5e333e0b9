#pragma once

#include <QtGlobal>

#include <cstddef>

#include <pthread.h>

namespace tarnwick {

/// While it exists the system has no memory for the stack of another thread.
class NoThreads {
public:
    NoThreads() {
        pthread_attr_t huge;
        if (::pthread_getattr_default_np(&usual_) != 0 || ::pthread_attr_init(&huge) != 0 ||
            ::pthread_attr_setstacksize(&huge, std::size_t{1} << 46) != 0 || ::pthread_setattr_default_np(&huge) != 0)
            qFatal("the size of a thread's stack cannot be chosen");
    }
    ~NoThreads() { ::pthread_setattr_default_np(&usual_); }
    Q_DISABLE_COPY_MOVE(NoThreads)

private:
    pthread_attr_t usual_{};
};

} // namespace tarnwick
