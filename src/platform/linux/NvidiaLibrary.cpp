#include "NvidiaLibrary.h"

namespace tarnwick {

namespace {

// The declarations that we need of the library's documented C interface. 0 is success; a device is an opaque pointer.
constexpr int success = 0;
using Device = void*;
struct Utilisation {
    unsigned gpu = 0;    ///< percent
    unsigned memory = 0; ///< percent
};
using Plain = int (*)();
using FindDevice = int (*)(const char* pciAddress, Device* device);
using ReadUtilisation = int (*)(Device device, Utilisation* utilisation);

template <typename Function>
Function resolve(QLibrary& library, const char* name) {
    return reinterpret_cast<Function>(library.resolve(name));
}

} // namespace

NvidiaLibrary::NvidiaLibrary(const QString& fileName) : library_(fileName) {
    library_.setLoadHints(QLibrary::PreventUnloadHint);
}

NvidiaLibrary::~NvidiaLibrary() {
    close();
}

bool NvidiaLibrary::open() {
    if (!isOpen_ && library_.load()) {
        const auto begin = resolve<Plain>(library_, "nvmlInit_v2");
        isOpen_ = begin != nullptr && begin() == success;
    }
    return isOpen_;
}

void NvidiaLibrary::close() {
    if (!isOpen_)
        return;
    isOpen_ = false;
    if (const auto end = resolve<Plain>(library_, "nvmlShutdown"))
        end();
}

std::optional<unsigned> NvidiaLibrary::utilisation(const QByteArray& pciAddress) {
    if (!open())
        return std::nullopt;
    const auto findDevice = resolve<FindDevice>(library_, "nvmlDeviceGetHandleByPciBusId_v2");
    const auto readUtilisation = resolve<ReadUtilisation>(library_, "nvmlDeviceGetUtilizationRates");
    Device device = nullptr;
    Utilisation answer;
    if (findDevice == nullptr || readUtilisation == nullptr || findDevice(pciAddress.constData(), &device) != success ||
        readUtilisation(device, &answer) != success)
        return std::nullopt;
    return answer.gpu;
}

} // namespace tarnwick
