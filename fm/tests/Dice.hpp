/// The seed of a test that plays at random: printed, and taken from the environment variable ZORV_TEST_SEED to play again.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace ZorvFm {

class Dice {
public:
    Dice() : seed(chooseSeed()), generator(seed) { std::cout << "ZORV_TEST_SEED=" << seed << std::endl; }

    /// Dice that fall as those of the given seed do.
    explicit Dice(std::uint64_t givenSeed) : seed(givenSeed), generator(seed) {}

    std::uint64_t getSeed() const { return seed; }

    /// From 0 to sides - 1.
    std::uint64_t roll(std::uint64_t sides)
    {
        return std::uniform_int_distribution<std::uint64_t>(0, sides - 1)(generator);
    }

    /// Any 64 bits; small numbers and the ends of the range turn up often.
    std::uint64_t number()
    {
        switch (roll(4)) {
        case 0:
            return roll(3);
        case 1:
            return ~roll(3);
        default:
            return generator();
        }
    }

    /// Any bytes, the final one included.
    std::string bytes(std::size_t maximum)
    {
        std::string text(roll(maximum + 1), '\0');
        for (char& c : text) {
            c = static_cast<char>(roll(256));
        }
        return text;
    }

private:
    static std::uint64_t chooseSeed()
    {
        const char* chosen = std::getenv("ZORV_TEST_SEED");
        return chosen == nullptr ? std::random_device{}() : std::stoull(chosen);
    }

    const std::uint64_t seed;
    std::mt19937_64 generator;
};

}  // namespace ZorvFm
