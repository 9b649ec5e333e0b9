#pragma once

#include "SystemWords.h"

namespace tarnwick {

inline constexpr SystemWords linuxWords{
    .system = u"Linux",
    .systemSymbol = u"info.circle",
    .kernel = u"Linux",

    .bar = u"panel",
    .barTitle = u"Panel",
    .barOnTile = u"Panel",
    .systemBar = u"panel",
    .systemBarInShort = u"panel",
    .barSymbol = u"square.grid.2x2",
    .barMenus = u"", // a panel has none, so seven figures fit

    .computer = u"computer",
    .model = u"Computer",
    .hardware = u"this computer's hardware",
    .hardwareTitle = u"Hardware",
    .telemetry = u"hardware telemetry",
    .telemetryTitle = u"Hardware Telemetry",
    .telemetryGuide = u"All thermal sensors, CPU, GPU utilization, and RAM metrics.",

    .ownFigure = u"",
    .figureOrigin = u"",
    .chip = u"Processor",
    .processor = u"Chip", // a processor and a graphics card, where it is not a system on a chip
    .namesLoneCoreKind = false,
    .gpuCores = u"", // no kernel interface counts them on every card
    .gpu = u"Graphics",
    .gpuInShort = u"Graphics",
    .ramTitle = u"RAM Usage",
    .memoryTitle = u"Memory",
    .memoryUnit = u"GB",
    .storage = u"Flash Memory",
    .processorDie = u"Chip Die (CPU/GPU)",
};

} // namespace tarnwick
