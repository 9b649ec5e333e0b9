#include "ScriptedMac.h"

#include "MacInterfaces.h"
#include "ProcessRunner.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

ScriptedMac mac;

ProcessInformation FoundationReadings::processInformation() { return mac.process; }
std::optional<QString> FoundationReadings::computerName() { return {}; }

bool ProcessRunner::startDetached(const QString& executable, const QStringList& arguments) {
    mac.calls << executable << arguments;
    return !mac.failing.contains(u"osascript"_s);
}

} // namespace tarnwick

using namespace tarnwick;

namespace {

QString text(const char* text) { return QString::fromUtf8(text); }
QString text(qint64 number) { return QString::number(number); }

bool fails(const char* function, const QStringList& arguments) {
    mac.calls << text(function) + u'(' + arguments.join(u", "_s) + u')';
    return mac.failing.contains(text(function));
}

template <typename Handle>
QString name(Handle object) {
    return object ? mac.objects.at(quintptr(object)).kind : u"null"_s;
}

template <typename Handle>
const QVariant& valueOf(Handle object) {
    if (!mac.isAlive(quintptr(object)))
        mac.faults << name(object) + u" is used too late"_s;
    return mac.objects.at(quintptr(object)).value;
}

/// Hands a new object out, or a part of another one.
template <typename Handle>
Handle make(const QString& kind, const QVariant& value, CFTypeRef whole = nullptr) {
    mac.objects.push_back({kind, value, whole ? 0 : 1, quintptr(whole)});
    return Handle(mac.objects.size() - 1);
}

template <typename Handle>
void release(Handle object) {
    mac.calls << u"release("_s + name(object) + u')';
    if (mac.objects.at(quintptr(object)).owners-- < 1)
        mac.faults << name(object) + u" is released too often"_s;
}

kern_return_t tell(bool failed, const QList<unsigned>& told, integer_t* info) {
    std::ranges::copy(told, info);
    return failed ? 5 : KERN_SUCCESS;
}

} // namespace

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const PlayedCallBacks kCFTypeDictionaryKeyCallBacks{true}, kCFTypeDictionaryValueCallBacks{true};
const mach_port_t kIOMainPortDefault = 0;
const std::uintptr_t vm_kernel_page_size = 16384;

int sysctlbyname(const char* name, void* value, std::size_t* size, void* /*newValue*/, std::size_t newSize) {
    const bool failed = fails("sysctlbyname", {text(name), text(value ? "buffer" : "null"), text(qint64(*size))});
    const auto known = mac.values.constFind(name);
    if (failed || newSize > 0 || known == mac.values.constEnd() || (value && !known->contents))
        return -1;
    const std::size_t room = *size;
    *size = value ? std::min(room, std::size_t(known->contents->size())) : known->toldSize;
    if (value)
        std::copy_n(known->contents->constData(), *size, static_cast<char*>(value));
    return value && *size < std::size_t(known->contents->size()) ? -1 : 0;
}

mach_port_t mach_host_self() { return make<mach_port_t>(u"host"_s, {}); }
mach_port_t mach_task_self() { return 0; }
kern_return_t mach_port_deallocate(mach_port_t /*task*/, mach_port_t port) { return release(port), KERN_SUCCESS; }
kern_return_t host_statistics(host_t host, int flavor, host_info_t info, mach_msg_type_number_t* count) {
    return tell(fails("host_statistics", {name(host), text(flavor), text(*count)}), mac.ticks, info);
}
kern_return_t host_statistics64(host_t host, int flavor, host_info64_t info, mach_msg_type_number_t* count) {
    return tell(fails("host_statistics64", {name(host), text(flavor), text(*count)}), {200, 1, 40, 5}, info);
}

CFMutableDictionaryRef IOServiceMatching(const char* name) {
    return fails("IOServiceMatching", {text(name)}) ? nullptr : make<CFMutableDictionaryRef>(u"matching"_s, {});
}
kern_return_t IOServiceGetMatchingServices(mach_port_t port, CFDictionaryRef matching, io_iterator_t* found) {
    const bool failed = fails("IOServiceGetMatchingServices", {text(port), name(matching)});
    release(matching);
    *found = failed ? 0 : make<io_iterator_t>(u"iterator"_s, {});
    return failed ? 5 : KERN_SUCCESS;
}
io_object_t IOIteratorNext(io_iterator_t iterator) {
    const bool ends = fails("IOIteratorNext", {name(iterator)}) || mac.accelerators.isEmpty();
    return ends ? 0 : make<io_object_t>(u"entry"_s, mac.accelerators.takeFirst());
}
kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry, CFMutableDictionaryRef* properties,
                                                CFAllocatorRef /*allocator*/, unsigned options) {
    if (fails("IORegistryEntryCreateCFProperties", {name(entry), text(options)}) || valueOf(entry).isNull())
        return 5;
    *properties = make<CFMutableDictionaryRef>(u"properties"_s, valueOf(entry));
    return KERN_SUCCESS;
}
kern_return_t IOObjectRelease(io_object_t object) { return release(object), KERN_SUCCESS; }

CFTypeRef IOHIDEventSystemClientCreate(CFAllocatorRef allocator) {
    return fails("IOHIDEventSystemClientCreate", {name(allocator)}) ? nullptr : make<CFTypeRef>(u"client"_s, {});
}
void IOHIDEventSystemClientSetMatching(CFTypeRef client, CFDictionaryRef matching) {
    QStringList arguments{name(client)};
    for (const auto& [name, value] : valueOf(matching).toMap().asKeyValueRange())
        arguments << name + u'=' + value.toString() + u' ' + text(value.typeName());
    fails("IOHIDEventSystemClientSetMatching", arguments);
}
CFTypeRef IOHIDEventSystemClientCopyServices(CFTypeRef client) {
    fails("IOHIDEventSystemClientCopyServices", {name(client)});
    return mac.services.isNull() ? nullptr : make<CFTypeRef>(u"services"_s, mac.services);
}
CFTypeRef IOHIDServiceClientCopyProperty(CFTypeRef service, CFStringRef key) {
    fails("IOHIDServiceClientCopyProperty", {name(service), name(key)});
    const QVariant value = valueOf(service).toMap().value(valueOf(key).toString());
    return value.isNull() ? nullptr : make<CFTypeRef>(u"product"_s, value);
}
CFTypeRef IOHIDServiceClientCopyEvent(CFTypeRef service, std::int64_t type, std::int32_t options, std::int64_t time) {
    fails("IOHIDServiceClientCopyEvent", {name(service), text(type), text(options), text(time)});
    const QVariant celsius = valueOf(service).toMap().value(u"celsius"_s);
    return celsius.isNull() ? nullptr : make<CFTypeRef>(u"event"_s, celsius);
}
double IOHIDEventGetFloatValue(CFTypeRef event, std::int32_t field) {
    fails("IOHIDEventGetFloatValue", {name(event), u"0x"_s + QString::number(field, 16)});
    return valueOf(event).toDouble();
}

CFStringRef playedConstant(const char* value) { return make<CFStringRef>(u'"' + text(value) + u'"', text(value)); }
void CFRelease(CFTypeRef object) { release(object); }
CFTypeID CFGetTypeID(CFTypeRef object) {
    const int type = valueOf(object).typeId();
    return CFTypeID(type == QMetaType::LongLong ? QMetaType::Double : type); // both are numbers
}
CFTypeID CFArrayGetTypeID() { return QMetaType::QVariantList; }
CFTypeID CFDictionaryGetTypeID() { return QMetaType::QVariantMap; }
CFTypeID CFNumberGetTypeID() { return QMetaType::Double; }
CFTypeID CFStringGetTypeID() { return QMetaType::QString; }
CFIndex CFArrayGetCount(CFArrayRef array) { return valueOf(array).toList().size(); }
CFTypeRef CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return make<CFTypeRef>(u"service %1"_s.arg(index), QVariant(valueOf(array).toList().at(index)), array);
}
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef /*allocator*/, CFTypeRef* keys, CFTypeRef* values, CFIndex count,
                                   const PlayedCallBacks* forKeys, const PlayedCallBacks* forValues) {
    QVariantMap entries;
    for (CFIndex i = 0; i < count && forKeys->retain && forValues->retain; ++i)
        entries.insert(valueOf(keys[i]).toString(), valueOf(values[i]));
    return make<CFDictionaryRef>(u"matching"_s, entries);
}
CFTypeRef CFDictionaryGetValue(CFDictionaryRef dictionary, CFTypeRef key) {
    const QVariant value = valueOf(dictionary).toMap().value(valueOf(key).toString());
    return value.isNull() ? nullptr : make<CFTypeRef>(u"value"_s, value, dictionary);
}
CFNumberRef CFNumberCreate(CFAllocatorRef /*allocator*/, CFNumberType type, const void* value) {
    return make<CFNumberRef>(u"number"_s, type == kCFNumberIntType ? *static_cast<const int*>(value) : QVariant());
}
bool CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type == kCFNumberDoubleType)
        *static_cast<double*>(value) = valueOf(number).toDouble();
    return type == kCFNumberDoubleType;
}
CFIndex CFStringGetLength(CFStringRef string) { return valueOf(string).toString().size(); }
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* characters) {
    const QString text = valueOf(string).toString().sliced(range.location, range.length);
    std::copy_n(text.utf16(), range.length, characters);
}
CFDictionaryRef CGSessionCopyCurrentDictionary() {
    return fails("CGSessionCopyCurrentDictionary", {}) ? nullptr : make<CFDictionaryRef>(u"session"_s, {});
}

} // extern "C"
