#pragma once

#include <QRandomGenerator>
#include <QtGlobal>
#include <cstdio>
#include <random>

/// Another sequence in each run; TESSALY_SEED, as printed, repeats one.
inline std::mt19937 seededRandom() {
    bool isGiven = false;
    const auto given = unsigned(qEnvironmentVariableIntValue("TESSALY_SEED", &isGiven));
    const unsigned seed = isGiven ? given : QRandomGenerator::global()->generate() >> 1;
    std::printf("TESSALY_SEED=%u\n", seed);
    return std::mt19937(seed);
}
