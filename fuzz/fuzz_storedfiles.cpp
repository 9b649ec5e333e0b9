// servers.json and settings.json, with any bytes in them.

#include "Coding.h"
#include "Fuzz.h"

using namespace tarnwick;

namespace {

/// What decodes is written and read back as it was; what does not, has a reason in one line.
template <typename Value, typename Decode, typename Encode>
void requireRoundTrip(const QByteArray& bytes, Decode decode, Encode encode) {
    const Decoded<Value> first = decode(bytes);
    if (const auto* const error = std::get_if<DecodingError>(&first)) {
        require(!error->description.isEmpty() && !hasControls(error->description), "a reason is one line");
        return;
    }
    const auto written = encode(std::get<Value>(first));
    require(written.has_value(), "what decodes can be written");
    const Decoded<Value> second = decode(*written);
    const auto* const again = std::get_if<Value>(&second);
    require(again != nullptr && *again == std::get<Value>(first), "what is written reads back as it was");
    require(encode(*again) == written, "the same value gives the same bytes");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes = bytesOf(data, size);
    requireRoundTrip<QList<Server>>(bytes, decodeServers, encodeServers);
    requireRoundTrip<AppSettings>(bytes, decodeSettings, encodeSettings);
    return 0;
}
