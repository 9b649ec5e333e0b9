#pragma once

#include "SystemWords.h"

namespace tarnwick {

inline constexpr SystemWords macWords{
    .system = u"macOS",
    .systemSymbol = u"apple.logo",
    .kernel = u"Darwin",

    .bar = u"menu bar",
    .barTitle = u"Menu Bar",
    .barOnTile = u"Bar",
    .systemBar = u"macOS menu bar",
    .systemBarInShort = u"macOS bar",
    .barSymbol = u"apple.logo",
    .barMenus = u"Tarnwick File Edit",

    .computer = u"Mac",
    .model = u"Mac",
    .hardware = u"Apple Silicon hardware",
    .hardwareTitle = u"Apple Silicon Hardware",
    .telemetry = u"Apple Silicon telemetry",
    .telemetryTitle = u"Apple Silicon Telemetry",
    .telemetryGuide = u"37+ IOHID thermal sensors, CPU, GPU utilization, and unified RAM metrics.",

    .ownFigure = u"Mac ",
    .figureOrigin = u" (Apple Silicon)",
    .chip = u"Apple Silicon",
    .processor = u"SoC",
    .namesLoneCoreKind = true,
    .gpuCores = u"Integrated GPU (Metal)",
    .gpu = u"Integrated GPU (Metal)",
    .gpuInShort = u"Metal",
    .ramTitle = u"Unified RAM",
    .memoryTitle = u"Unified Memory",
    .memoryUnit = u"GB Unified Memory",
    .storage = u"NAND Flash",
    .processorDie = u"SoC Die (CPU/GPU)",
};

} // namespace tarnwick
