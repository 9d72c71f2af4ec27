#pragma once

#include <array>
#include <string_view>

namespace platform::windows1252 {

/// Neighbouring characters and the byte that stands for each.
struct BestFitRun {
    char16_t first;
    std::string_view bytes;
};

/// The system's best fit table of code page 1252: which byte is written for a character that the code page
/// does not have. Ascending; what stands in no run has no byte that comes near it. "?" for U+FF1F is meant.
inline constexpr std::array BestFitRuns = std::to_array<BestFitRun>({
    // Latin letters
    {0x0100, "AaAaAaCcCcCcCcDd\xD0"
             "d"},
    {0x0112, "EeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi"},
    {0x0134, "JjKk"},
    {0x0139, "LlLlLl"},
    {0x0141, "LlNnNnNn"},
    {0x014C, "OoOoOo"},
    {0x0154, "RrRrRrSsSsSs"},
    {0x0162, "TtTtTtUuUuUuUuUuUuWwYy"},
    {0x0179, "ZzZz"},
    {0x0180, "b"},
    {0x0189, "\xD0"},
    {0x0191, "\x83"},
    {0x0197, "I"},
    {0x019A, "l"},
    {0x019F, "OOo"},
    {0x01AB, "t"},
    {0x01AE, "TUu"},
    {0x01B6, "z"},
    {0x01C0, "|"},
    {0x01C3, "!"},
    {0x01CD, "AaIiOoUuUuUuUuUu"},
    {0x01DE, "Aa"},
    {0x01E4, "GgGgKkOoOo"},
    {0x01F0, "j"},
    {0x0261, "g"},
    // accents
    {0x02B9, "'\""},
    {0x02BC, "'"},
    {0x02C4, "^"},
    {0x02C8, "'\xAF\xB4`"},
    {0x02CD, "_"},
    {0x02DA, "\xB0"},
    {0x0300, "`\xB4^~\xAF\xAF"},
    {0x0308, "\xA8"},
    {0x030A, "\xB0"},
    {0x030E, "\""},
    {0x0327, "\xB8"},
    {0x0331, "__"},
    // Greek letters and others
    {0x037E, ";"},
    {0x0393, "G"},
    {0x0398, "T"},
    {0x03A3, "S"},
    {0x03A6, "F"},
    {0x03A9, "O"},
    {0x03B1, "a\xDF"},
    {0x03B4, "de"},
    {0x03BC, "\xB5"},
    {0x03C0, "p"},
    {0x03C3, "st"},
    {0x03C6, "f"},
    {0x04BB, "h"},
    {0x0589, ":"},
    {0x066A, "%"},
    // spaces, dashes, primes, superscripts and subscripts
    {0x2000, "       "},
    {0x2010, "--"},
    {0x2017, "="},
    {0x2024, "\xB7"},
    {0x2032, "'"},
    {0x2035, "`"},
    {0x2044, "/"},
    {0x2070, "\xB0"},
    {0x2074, "45678"},
    {0x207F, "n0123456789"},
    // currencies and letterlike symbols
    {0x20A1, "\xA2"},
    {0x20A4, "\xA3"},
    {0x20A7, "P"},
    {0x2102, "C"},
    {0x2107, "E"},
    {0x210A, "gHHHh"},
    {0x2110, "IILl"},
    {0x2115, "N"},
    {0x2118, "PPQRRR"},
    {0x2124, "Z"},
    {0x2128, "Z"},
    {0x212A, "K\xC5"
             "BCeeEF"},
    {0x2133, "Mo"},
    // mathematical signs
    {0x2205, "\xD8"},
    {0x2212, "-\xB1"},
    {0x2215, "/\\*\xB0\xB7v"},
    {0x221E, "8"},
    {0x2223, "|"},
    {0x2229, "n"},
    {0x2236, ":"},
    {0x223C, "~"},
    {0x2248, "\x98"},
    {0x2261, "="},
    {0x2264, "=="},
    {0x226A, "\xAB\xBB"},
    {0x22C5, "\xB7"},
    {0x2302, "\xA6^"},
    {0x2310, "\xAC"},
    {0x2320, "()"},
    {0x2329, "<>"},
    // lines and blocks
    {0x2500, "-"},
    {0x2502, "\xA6"},
    {0x250C, "+"},
    {0x2510, "+"},
    {0x2514, "+"},
    {0x2518, "+"},
    {0x251C, "+"},
    {0x2524, "\xA6"},
    {0x252C, "-"},
    {0x2534, "-"},
    {0x253C, "+"},
    {0x2550, "-\xA6++++++++++++\xA6\xA6\xA6\xA6\xA6\xA6------+++"},
    {0x2580, "\xAF"},
    {0x2584, "_"},
    {0x2588, "\xA6"},
    {0x258C, "\xA6"},
    {0x2590, "\xA6\xA6\xA6\xA6"},
    {0x25A0, "\xA6"},
    {0x263C, "\xA4"},
    {0x2758, "|"},
    // signs of the Far East; full width forms
    {0x3000, " "},
    {0x3008, "<>\xAB\xBB"},
    {0x301A, "[]"},
    {0x30FB, "\xB7"},
    {0xFF01,
     "!\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~"},
});

} // namespace platform::windows1252
