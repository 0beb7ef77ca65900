#pragma once

#include <QString>

// The two fonts that the program brings along: Inter for text, Material Icons for symbols. Both are
// in the binary, so that screens look the same whatever the machine has installed.
//
// GUI thread only.
namespace brivane {

/// Makes both fonts known and Inter the application's font. Call it once a QGuiApplication exists
/// and before the first screen; further calls do nothing.
void registerFonts();

/// Family of the text font, "Inter"; empty before registerFonts().
[[nodiscard]] QString textFontFamily();

/// Family of the symbol font; empty before registerFonts().
[[nodiscard]] QString symbolFontFamily();

} // namespace brivane
