#include "h264header.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace H264Header {

namespace {

// Reads the bits of a network unit's payload, its emulation-prevention bytes already removed.
// Every read past the end fails the whole parse rather than inventing zeros.
class BitReader
{
public:
    explicit BitReader(std::vector<uint8_t> bytes) : m_bytes(std::move(bytes)) {}

    std::optional<uint32_t> bits(int count)
    {
        uint32_t value = 0;
        for (int i = 0; i < count; ++i) {
            if (m_position >= m_bytes.size() * 8)
                return std::nullopt;
            const uint8_t byte = m_bytes[m_position / 8];
            value = (value << 1) | ((byte >> (7 - m_position % 8)) & 1);
            ++m_position;
        }
        return value;
    }

    // Exp-Golomb codes; no field of a sequence header needs more than 32 bits.
    std::optional<uint32_t> unsignedCode()
    {
        int zeros = 0;
        for (;;) {
            const std::optional<uint32_t> bit = bits(1);
            if (!bit)
                return std::nullopt;
            if (*bit)
                break;
            if (++zeros > 31)
                return std::nullopt;
        }
        const std::optional<uint32_t> rest = bits(zeros);
        if (!rest)
            return std::nullopt;
        return uint32_t((uint64_t(1) << zeros) - 1 + *rest);
    }

    bool skip(size_t count)
    {
        if (m_position + count > m_bytes.size() * 8)
            return false;
        m_position += count;
        return true;
    }
    bool skipCodes(int count)
    {
        for (int i = 0; i < count; ++i) {
            if (!unsignedCode()) // a signed code takes the same bits
                return false;
        }
        return true;
    }

private:
    std::vector<uint8_t> m_bytes;
    size_t m_position = 0;
};

std::vector<uint8_t> payloadOf(std::span<const uint8_t> unit)
{
    std::vector<uint8_t> payload;
    payload.reserve(unit.size());
    int zeros = 0;
    for (const uint8_t byte : unit) {
        if (zeros >= 2 && byte == 3) {
            zeros = 0;
            continue;
        }
        zeros = byte == 0 ? zeros + 1 : 0;
        payload.push_back(byte);
    }
    return payload;
}

bool skipScalingList(BitReader &bits, int size)
{
    int last = 8;
    int next = 8;
    for (int j = 0; j < size; ++j) {
        if (next != 0) {
            const std::optional<uint32_t> code = bits.unsignedCode();
            if (!code)
                return false;
            // Signed code k maps to +(k+1)/2 for odd k, -k/2 for even k.
            const int delta = (*code & 1) ? int((*code + 1) / 2) : -int(*code / 2);
            next = (last + delta + 256) % 256;
        }
        last = next == 0 ? last : next;
    }
    return true;
}

// Profiles whose header states the chroma format, the bit depths and the scaling matrices.
constexpr uint32_t kFidelityProfiles[] = {100, 110, 122, 244, 44,  83, 86,
                                          118, 128, 138, 139, 134, 135};

bool skipHrd(BitReader &bits)
{
    const std::optional<uint32_t> count = bits.unsignedCode();
    if (!count || *count > 31 || !bits.skip(8))
        return false;
    for (uint32_t i = 0; i <= *count; ++i) {
        if (!bits.skipCodes(2) || !bits.skip(1))
            return false;
    }
    return bits.skip(20);
}

// Whether the sequence header `unit` (header byte included) codes frames only and has no
// picture-timing structure.
std::optional<bool> sequenceFramesOnly(std::span<const uint8_t> unit)
{
    if (unit.empty() || (unit[0] & 0x1f) != 7)
        return std::nullopt;
    BitReader bits(payloadOf(unit.subspan(1)));
    const std::optional<uint32_t> profile = bits.bits(8);
    if (!profile || !bits.skip(16) || !bits.skipCodes(1))
        return std::nullopt;
    if (std::find(std::begin(kFidelityProfiles), std::end(kFidelityProfiles), *profile) !=
        std::end(kFidelityProfiles)) {
        const std::optional<uint32_t> chroma = bits.unsignedCode();
        if (!chroma || (*chroma == 3 && !bits.skip(1)) || !bits.skipCodes(2) || !bits.skip(1))
            return std::nullopt;
        const std::optional<uint32_t> matrices = bits.bits(1);
        if (!matrices)
            return std::nullopt;
        for (int i = 0; *matrices && i < (*chroma == 3 ? 12 : 8); ++i) {
            const std::optional<uint32_t> present = bits.bits(1);
            if (!present || (*present && !skipScalingList(bits, i < 6 ? 16 : 64)))
                return std::nullopt;
        }
    }
    const std::optional<uint32_t> orderType =
        bits.skipCodes(1) ? bits.unsignedCode() : std::nullopt;
    if (!orderType)
        return std::nullopt;
    if (*orderType == 0 && !bits.skipCodes(1))
        return std::nullopt;
    if (*orderType == 1) {
        if (!bits.skip(1) || !bits.skipCodes(2))
            return std::nullopt;
        const std::optional<uint32_t> cycle = bits.unsignedCode();
        if (!cycle || *cycle > 255 || !bits.skipCodes(int(*cycle)))
            return std::nullopt;
    }
    if (!bits.skipCodes(1) || !bits.skip(1) || !bits.skipCodes(2))
        return std::nullopt;
    const std::optional<uint32_t> frameMacroblocksOnly = bits.bits(1);
    if (!frameMacroblocksOnly)
        return std::nullopt;
    if (!*frameMacroblocksOnly)
        return false;
    if (!bits.skip(1)) // direct 8×8 inference
        return std::nullopt;
    const std::optional<uint32_t> cropped = bits.bits(1);
    if (!cropped || (*cropped && !bits.skipCodes(4)))
        return std::nullopt;
    const std::optional<uint32_t> usability = bits.bits(1);
    if (!usability)
        return std::nullopt;
    if (!*usability)
        return true;

    // The usability block, up to the flag that lets each picture state its own structure.
    // `when` reads a presence flag and then the block it announces.
    const auto when = [&](auto &&skipBlock) {
        const std::optional<uint32_t> present = bits.bits(1);
        return present && (!*present || skipBlock());
    };
    const auto aspect = [&] {
        const std::optional<uint32_t> kind = bits.bits(8);
        return kind && (*kind != 255 || bits.skip(32)); // 255: the ratio follows in full
    };
    const auto signal = [&] { return bits.skip(4) && when([&] { return bits.skip(24); }); };
    if (!when(aspect) || !when([&] { return bits.skip(1); }) || !when(signal) ||
        !when([&] { return bits.skipCodes(2); }) || !when([&] { return bits.skip(65); }))
        return std::nullopt;
    bool anyHrd = false;
    for (int i = 0; i < 2; ++i) { // network and coding-layer decoder models
        const std::optional<uint32_t> hrd = bits.bits(1);
        if (!hrd || (*hrd && !skipHrd(bits)))
            return std::nullopt;
        anyHrd = anyHrd || *hrd;
    }
    if (anyHrd && !bits.skip(1))
        return std::nullopt;
    const std::optional<uint32_t> pictureStructure = bits.bits(1);
    if (!pictureStructure)
        return std::nullopt;
    return *pictureStructure == 0;
}

} // namespace

bool framesOnly(std::span<const uint8_t> avcC)
{
    // Version 1, profile, compatibility, level, length size, then the sequence headers.
    if (avcC.size() < 6 || avcC[0] != 1)
        return false;
    const int count = avcC[5] & 0x1f;
    size_t at = 6;
    for (int i = 0; i < count; ++i) {
        if (at + 2 > avcC.size())
            return false;
        const size_t length = size_t(avcC[at]) << 8 | avcC[at + 1];
        at += 2;
        if (length == 0 || at + length > avcC.size())
            return false;
        if (sequenceFramesOnly(avcC.subspan(at, length)) != true)
            return false;
        at += length;
    }
    return count > 0;
}

} // namespace H264Header
