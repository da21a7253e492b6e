#pragma once

namespace quillform {

// Filters of typed keys by their character codes. A paste isn't typed and so isn't filtered.

/// What becomes of a typed key.
struct FilteredKey {
    int keyAscii = 0;    ///< the key to go on with; 0 drops it
    bool beeps = false;  ///< the user is told by ear that the key was refused

    friend bool operator==(const FilteredKey&, const FilteredKey&) = default;
};

/// For boxes that hold a whole number: digits and Backspace pass, Enter and blank are dropped silently, any other key
/// is dropped with a beep.
constexpr FilteredKey NumberKeyFilter(int keyAscii) {
    constexpr int backspace = 8;
    constexpr int enter = 13;
    if ((keyAscii >= '0' && keyAscii <= '9') || keyAscii == backspace) return {keyAscii, false};
    return {0, keyAscii != enter && keyAscii != ' '};
}

/// For boxes of one line: Enter is dropped, all else passes.
constexpr int NoEnterKey(int keyAscii) { return keyAscii == 13 ? 0 : keyAscii; }

}  // namespace quillform
