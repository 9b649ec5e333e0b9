#pragma once

// What src/platform/macos uses of a Mac's C interfaces, as ScriptedMac plays it.

#include <cstddef>
#include <cstdint>

extern "C" {

typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFArray* CFArrayRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef struct __CFDictionary* CFMutableDictionaryRef;
typedef const struct __CFNumber* CFNumberRef;
typedef const struct __CFString* CFStringRef;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef std::uint16_t UniChar;
struct CFRange {
    CFIndex location, length;
};
enum CFNumberType { kCFNumberIntType = 9, kCFNumberDoubleType = 13 }; // the linter knows them by these
struct PlayedCallBacks {
    bool retain;
};

extern const CFAllocatorRef kCFAllocatorDefault;
extern const PlayedCallBacks kCFTypeDictionaryKeyCallBacks, kCFTypeDictionaryValueCallBacks;
#define CFSTR(text) playedConstant(text)
CFStringRef playedConstant(const char* text);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFArrayGetTypeID();
CFTypeID CFDictionaryGetTypeID();
CFTypeID CFNumberGetTypeID();
CFTypeID CFStringGetTypeID();
CFIndex CFArrayGetCount(CFArrayRef array);
CFTypeRef CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, CFTypeRef* keys, CFTypeRef* values, CFIndex count,
                                   const PlayedCallBacks* forKeys, const PlayedCallBacks* forValues);
CFTypeRef CFDictionaryGetValue(CFDictionaryRef dictionary, CFTypeRef key);
CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type, const void* value);
bool CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
CFIndex CFStringGetLength(CFStringRef string);
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* characters);
CFDictionaryRef CGSessionCopyCurrentDictionary();

typedef int kern_return_t, integer_t;
typedef unsigned natural_t, mach_msg_type_number_t, mach_port_t, host_t, io_object_t, io_iterator_t,
    io_registry_entry_t;
typedef integer_t *host_info_t, *host_info64_t;
struct host_cpu_load_info_data_t {
    natural_t cpu_ticks[4];
};
struct vm_statistics64_data_t {
    natural_t wire_count, free_count, active_count, compressor_page_count;
};
enum { KERN_SUCCESS, CPU_STATE_USER = 0, CPU_STATE_SYSTEM, CPU_STATE_IDLE, CPU_STATE_NICE };
enum { HOST_CPU_LOAD_INFO = 100, HOST_VM_INFO64, HOST_CPU_LOAD_INFO_COUNT = 4, HOST_VM_INFO64_COUNT = 4 };

extern const mach_port_t kIOMainPortDefault;
extern const std::uintptr_t vm_kernel_page_size;
int sysctlbyname(const char* name, void* value, std::size_t* size, void* newValue, std::size_t newSize);
mach_port_t mach_host_self();
mach_port_t mach_task_self();
kern_return_t mach_port_deallocate(mach_port_t task, mach_port_t port);
kern_return_t host_statistics(host_t host, int flavor, host_info_t info, mach_msg_type_number_t* count);
kern_return_t host_statistics64(host_t host, int flavor, host_info64_t info, mach_msg_type_number_t* count);
std::size_t malloc_zone_pressure_relief(struct malloc_zone_t* zone, std::size_t goal);

CFMutableDictionaryRef IOServiceMatching(const char* name);
kern_return_t IOServiceGetMatchingServices(mach_port_t port, CFDictionaryRef matching, io_iterator_t* found);
io_object_t IOIteratorNext(io_iterator_t iterator);
kern_return_t IORegistryEntryCreateCFProperties(io_registry_entry_t entry, CFMutableDictionaryRef* properties,
                                                CFAllocatorRef allocator, unsigned options);
kern_return_t IOObjectRelease(io_object_t object);

} // extern "C"
