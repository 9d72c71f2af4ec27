#pragma once

#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace kvtm::test {

/// Makes options documents at random: few tools and names, so that they often repeat, in every shape that the
/// addresses of options have to cope with.
class RandomOptions {
public:
    explicit RandomOptions(unsigned seed) : random_(seed) {}

    bool OneIn(int chances) { return Below(chances) == 0; }
    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }

    std::string_view ToolId() {
        static constexpr std::string_view ids[] = {"SOV02", "Vn34",  "Jx310",       "",    "it's",
                                                   "a\"b",  "Wärme", "x'] | //*['", "[1]", "\U0001F600"};
        return Pick(ids);
    }
    std::string_view Name() {
        static constexpr std::string_view names[] = {"chkShowPricing",
                                                     "lblShowPricingUI",
                                                     "cmbUnitOfMeasure",
                                                     "cmbLanguage",
                                                     "cmbDefaultPrinter",
                                                     "optOne",
                                                     "Brücke",
                                                     "",
                                                     " x ",
                                                     "it's",
                                                     "a\"b",
                                                     "']",
                                                     "<&>"};
        return Pick(names);
    }
    std::string_view Text() {
        static constexpr std::string_view texts[] = {
            "ON",
            "OFF",
            "",
            " ",
            "\t",
            "line\nbreak",
            "a\rb",
            "]]>",
            "<x/> & \"y\" 'z'",
            "Süd – €",
            "\U0001F600",
            "English",
            "text that is longer than any that stands where it is put, for the text to grow"};
        return Pick(texts);
    }

    std::string Document() {
        text_ = OneIn(4) ? "<?xml version=\"1.0\"?>\n" : "";
        if (OneIn(4)) text_ += "<!-- <Tool ID='SOV02'/> -->";
        text_ += OneIn(8) ? "<Options xmlns:n='urn:n'>" : "<Options>";
        if (OneIn(2)) {
            Tools(2);
        } else {
            text_ += "<ToolOptions>";
            Tools(2);
            text_ += "</ToolOptions>";
            if (OneIn(3)) Tools(1);
        }
        text_ += "</Options>";
        if (OneIn(4)) text_ += "<!--end-->";
        return text_;
    }

private:
    template <std::size_t count> std::string_view Pick(const std::string_view (&from)[count]) {
        return from[Below(static_cast<int>(count))];
    }

    void Tools(int depth) {
        for (int i = Below(5); i >= 0; --i)
            Tool(depth);
    }

    void Tool(int depth) {
        if (OneIn(10)) text_ += "<!-- note -->";
        text_ += OneIn(12) ? "<Tool xmlns='urn:x'" : OneIn(12) ? "<Other" : "<Tool";
        const bool isOther = text_.ends_with("<Other");
        if (OneIn(6)) text_ += " Id='SOV02'";
        if (!OneIn(10)) {
            text_ += " ID=\"";
            Escaped(ToolId());
            text_ += '"';
        }
        text_ += ">";
        for (int i = Below(6); i > 0; --i)
            Option(depth);
        if (OneIn(3)) text_ += "<Plain>text</Plain>";
        if (depth > 0 && OneIn(6)) Tool(depth - 1);
        text_ += isOther ? "</Other>" : "</Tool>";
    }

    void Option(int depth) {
        if (OneIn(16)) {
            text_ += "<Option/>";
            return;
        }
        text_ += "<Option>";
        if (OneIn(10)) text_ += "<!--first-->";
        if (OneIn(8)) Value(depth);
        for (int i = OneIn(6) ? Below(3) : 1; i > 0; --i)
            NameElement(depth);
        if (!OneIn(8)) Value(depth);
        if (OneIn(4)) text_ += "<Visible>0</Visible>";
        if (OneIn(12)) Value(depth);
        text_ += "</Option>";
    }

    void NameElement(int depth) {
        text_ += "<Name>";
        const std::string_view name = Name();
        if (OneIn(8) && !name.empty()) { // in pieces
            Escaped(name.substr(0, 1).front() & 0x80 ? std::string_view() : name.substr(0, 1));
            text_ += "<!--piece--><![CDATA[";
            text_ += name.front() & 0x80 ? name : name.substr(1);
            text_ += "]]>";
        } else {
            Escaped(name);
        }
        if (depth > 0 && OneIn(20)) Tool(0);
        text_ += "</Name>";
    }

    void Value(int depth) {
        text_ += "<Value>";
        if (OneIn(8))
            text_ += "<![CDATA[raw <text>]]>";
        else
            Escaped(Text());
        if (depth > 0 && OneIn(20)) Tool(0);
        text_ += "</Value>";
    }

    void Escaped(std::string_view text) {
        for (const char c : text) {
            switch (c) {
            case '<':
                text_ += "&lt;";
                break;
            case '>':
                text_ += "&gt;";
                break;
            case '&':
                text_ += "&amp;";
                break;
            case '"':
                text_ += "&quot;";
                break;
            case '\r':
                text_ += "&#13;";
                break;
            default:
                text_ += c;
            }
        }
    }

    std::mt19937 random_;
    std::string text_;
};

} // namespace kvtm::test
