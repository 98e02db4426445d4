#pragma once

#include <cstddef>
#include <cstdint>

namespace dravik::vehicle {

/// A small random generator whose numbers depend on the seed alone, on every system alike; the
/// standard library's distributions do not promise that.
class Random {
 public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }

    /// 0 included, 1 excluded.
    double NextUnit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }

    /// 0 .. bound - 1.
    std::size_t NextBelow(std::size_t bound) { return static_cast<std::size_t>(Next() % bound); }

 private:
    std::uint64_t state_;
};

}  // namespace dravik::vehicle
