#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string_view>

namespace dravik {

/// A hash of names that does not tell letters from their capitals. It is keyed anew in every run
/// (SipHash with one and three rounds), so that no file can be made of names that collide.
///
/// Copies go on from where they were taken.
class NameHash {
 public:
    NameHash()
        : v0_(Key().First ^ 0x736f6d6570736575U),
          v1_(Key().Second ^ 0x646f72616e646f6dU),
          v2_(Key().First ^ 0x6c7967656e657261U),
          v3_(Key().Second ^ 0x7465646279746573U) {}

    /// Adds a whole name. Its length goes in too, so that "a", "bc" is not "ab", "c".
    void Add(std::string_view name) {
        std::size_t i = 0;
        for (; i + sizeof(std::uint64_t) <= name.size(); i += sizeof(std::uint64_t))
            AddWord(Folded(WordOf(name.substr(i, sizeof(std::uint64_t)))));
        AddWord(Folded(WordOf(name.substr(i))) | std::uint64_t{name.size()} << 56);
    }

    std::uint32_t Result() const {
        NameHash end = *this;
        end.v2_ ^= 0xFF;
        for (int i = 0; i < 3; ++i) end.Round();
        const std::uint64_t whole = end.v0_ ^ end.v1_ ^ end.v2_ ^ end.v3_;
        return static_cast<std::uint32_t>(whole ^ whole >> 32);
    }

 private:
    struct SecretKey {
        std::uint64_t First;
        std::uint64_t Second;
    };

    static const SecretKey& Key() {
        static const SecretKey key = [] {
            std::random_device random;
            const auto word = [&random] { return std::uint64_t{random()} << 32 | random(); };
            return SecretKey{word(), word()};
        }();
        return key;
    }

    /// Up to eight bytes as a number.
    static std::uint64_t WordOf(std::string_view bytes) {
        std::uint64_t word = 0;
        if (!bytes.empty()) std::memcpy(&word, bytes.data(), bytes.size());
        return word;
    }

    /// Every byte that is a capital letter made small, all eight at once.
    static std::uint64_t Folded(std::uint64_t word) {
        constexpr std::uint64_t kEach = 0x0101010101010101U;
        const std::uint64_t low = word & kEach * 0x7F;
        const std::uint64_t fromA = low + kEach * (0x80 - 'A');
        const std::uint64_t behindZ = low + kEach * (0x80 - 'Z' - 1);
        const std::uint64_t capitals = (fromA ^ behindZ) & ~word & kEach * 0x80;
        return word | capitals >> 2;
    }

    static std::uint64_t Rotated(std::uint64_t word, int bits) {
        return word << bits | word >> (64 - bits);
    }

    void AddWord(std::uint64_t word) {
        v3_ ^= word;
        Round();
        v0_ ^= word;
    }

    void Round() {
        v0_ += v1_;
        v1_ = Rotated(v1_, 13) ^ v0_;
        v0_ = Rotated(v0_, 32);
        v2_ += v3_;
        v3_ = Rotated(v3_, 16) ^ v2_;
        v0_ += v3_;
        v3_ = Rotated(v3_, 21) ^ v0_;
        v2_ += v1_;
        v1_ = Rotated(v1_, 17) ^ v2_;
        v2_ = Rotated(v2_, 32);
    }

    std::uint64_t v0_;
    std::uint64_t v1_;
    std::uint64_t v2_;
    std::uint64_t v3_;
};

}  // namespace dravik
