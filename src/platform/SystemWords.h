#pragma once

#include <QStringView>

namespace tarnwick {

/// The words that differ by operating system in what the views show. The texts around them are in the views' content
/// files. Each system's folder has a table of them, which compiles on every system, so that tests show the views under
/// each.
struct SystemWords {
    QStringView system;       ///< "macOS", in the name of the kind of program that this is
    QStringView systemSymbol; ///< one of our symbols, see resources/symbols/
    QStringView kernel;       ///< where the kernel does not say its release

    // Where the status item is.
    QStringView bar;              ///< "menu bar"
    QStringView barTitle;         ///< "Menu Bar", in a heading
    QStringView barOnTile;        ///< "Bar", where there is little room
    QStringView systemBar;        ///< "macOS menu bar"
    QStringView systemBarInShort; ///< "macOS bar"
    QStringView barSymbol;        ///< at the start of the tour's sample of a bar
    QStringView barMenus;         ///< what follows there, separated by spaces; may be empty

    // This computer.
    QStringView computer;       ///< "Mac", in "your …"
    QStringView model;          ///< where its model identifier is not known
    QStringView hardware;       ///< "Apple Silicon hardware"
    QStringView hardwareTitle;  ///< "Apple Silicon Hardware", in a heading
    QStringView telemetry;      ///< "Apple Silicon telemetry"
    QStringView telemetryTitle; ///< "Apple Silicon Telemetry", in a heading
    QStringView telemetryGuide; ///< a sentence: what is read of this computer

    // Its figures.
    QStringView ownFigure;    ///< before the name of a load that can be pinned: "Mac "; may be empty
    QStringView figureOrigin; ///< after a figure on a card: " (Apple Silicon)"; may be empty
    QStringView chip;         ///< where the processor's name is not known
    QStringView processor;    ///< what the average temperature is of: "SoC"
    bool namesLoneCoreKind;   ///< a count of cores names their kinds, even if there is only one kind
    QStringView gpuCores;     ///< the description of the graphics cores; empty: it is not shown
    QStringView gpu;          ///< "Integrated GPU (Metal)", below the graphics load
    QStringView gpuInShort;   ///< "Metal"
    QStringView ramTitle;     ///< the title of the memory's load
    QStringView memoryTitle;  ///< "Unified Memory"
    QStringView memoryUnit;   ///< after the installed memory's amount: "GB Unified Memory"
    QStringView storage;      ///< what the storage is made of
    QStringView processorDie; ///< the kind of sensor that measures the processor
};

/// The table of the system that the program is built for.
[[nodiscard]] const SystemWords& systemWords();

} // namespace tarnwick
