#pragma once

#include "desktop/controls/OptionNames.h"

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace base {
class XmlNode;
}

namespace desktop {

/// One option as it is shown.
struct OptionField {
    std::string name;
    QString label;
    OptionKind kind = OptionKind::Text;
    std::string original, value; // in the text, and as edited
    bool editable = true;        // false: the text has no place for its value
    int radioGroup = -1;         // of options that are on one at a time
    std::size_t place = 0;       // among all options of the text
    QString searched;            // what a search looks at, folded

    bool IsChanged() const { return value != original; }
};

/// The options of one tool that are to be seen.
struct OptionPage {
    std::string toolId;
    QString title;
    std::vector<OptionField> fields;
    std::size_t changes = 0; // how many fields are changed
};

/// The options text as pages of fields, with the changes made to them. Nothing but the values that were
/// changed differs in the text that comes out.
///
/// Both forms are read: tools directly under the root, and tools inside other elements. Hidden options
/// ("Visible" is "0") and tools without options to be seen have no place on a page and stay in the text.
class OptionSheet {
public:
    /// Replaces everything. Throws ComponentError, content unchanged, for a text that is not well-formed.
    void Load(const std::string& text);

    const std::vector<OptionPage>& Pages() const { return pages_; }
    const OptionField& Field(std::size_t page, std::size_t field) const { return pages_[page].fields[field]; }

    struct Rebased {
        std::vector<QString> lost; // labels of changed options that the new text has no more
        bool looksTheSame = false; // the same options in the same places; values may differ
    };
    /// Goes on from another text, that which is in force by now: what was changed here stays changed, also
    /// where the new text has another value; everything else is as the new text says. Throws as Load.
    Rebased Rebase(const std::string& text);

    /// A radio option that goes on turns the others of its group off.
    void SetValue(std::size_t page, std::size_t field, std::string value);
    void Reset(std::size_t page, std::size_t field);
    void ResetPage(std::size_t page);
    std::size_t Changes() const; // of all pages

    /// The fields that hold the words of `needle` in label, name or value, letter case and marks ignored; all
    /// of them when the page's title does or the needle is empty.
    std::vector<std::size_t> Matching(std::size_t page, const QString& needle) const;

    /// Why a changed value cannot be saved; empty when it can.
    QString TroubleOf(const OptionField& field) const;
    /// What is odd about a changed value and yet can be saved.
    QString WarningOf(const OptionField& field) const;
    struct Trouble {
        std::size_t page, field;
        QString text;
    };
    /// All of them, in the order of the pages.
    std::vector<Trouble> Troubles() const;

    /// The whole options text, the changed values in it; the text as it was loaded while nothing is changed.
    std::string Text() const;

private:
    void ReadTool(const base::XmlNode& tool, std::size_t& place);
    void Store(std::size_t page, std::size_t field, std::string value);

    std::string text_;
    std::vector<OptionPage> pages_;
};

} // namespace desktop
