// The decoders and the encoder against their simple doubles, on any bytes.
#include "file/encodings.h"
#include "file/simpleDecoder_test.h"

#include <cstdlib>
#include <cstring>

static void require(bool holds) {
    if (!holds) std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, data + size);
    const Text decoded = ufu_UTF8ToString(bytes);
    require(decoded == test::simpleDecoded(bytes, false));
    require(UTF8ToStringEx(bytes) == test::simpleDecoded(bytes, true));

    // As when a file is read: the bytes in the second half of the text's memory.
    Text shared(size, u'\0');
    auto* const half = reinterpret_cast<std::uint8_t*>(shared.data()) + size;
    if (size != 0) std::memcpy(half, data, size);
    shared.resize(decodeUTF8(half, size, shared.data()));
    require(shared == decoded);

    Text units(size / 2, u'\0');
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * 2);
    const Bytes encoded = ufu_StringToUTF8(units);
    require(encoded == test::simpleEncoded(units));
    require(ufu_UTF8ToString(encoded) == units);
    require(UnpackUTF8(PackUTF8(units)) == units);
    return 0;
}
