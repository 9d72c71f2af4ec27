#include "desktop/controls/OptionRow.h"

#include "base/Text.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/Parts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QTextDocument>
#include <QToolButton>

#include <algorithm>
#include <limits>

namespace desktop {

namespace {

constexpr qsizetype longText = 2000; // characters from which a line is shown as several
constexpr int highestChoice = 9;     // of a radio option whose value is a number
constexpr const char* valueProperty = "value";

/// Every character as it is: the editor's own plain text has blanks for no-break spaces.
QString WholeText(const QPlainTextEdit& editor) {
    return editor.document()->toRawText().replace(QChar::ParagraphSeparator, '\n');
}

/// The wheel scrolls the page; it changes a value only where the user is.
class WheelGuard final : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() != QEvent::Wheel || !widget || widget->hasFocus()) return false;
        event->ignore();
        return true;
    }
};

/// The value that a switch takes: the original text where it means the same, so that turning it there and
/// back is no change.
std::string SwitchValue(const OptionField& field, bool on) {
    if (SwitchWordsOf(field.original) && IsOn(field.original) == on) return field.original;
    if (!on && !SwitchWordsOf(field.original)) return field.original;
    const SwitchWords words = SwitchWordsOf(field.original).value_or(SwitchWords{"ON", "OFF"});
    return std::string(on ? words.on : words.off);
}

/// Numbers from 0 for an option of which nothing but its number is known.
OptionChoices NumberedChoices(const std::string& value) {
    OptionChoices choices;
    bool good = false;
    const int number = ToQt(value).toInt(&good);
    if (!good || number < 0 || number > highestChoice) return choices;
    for (int choice = 0; choice <= std::max(number, 2); ++choice)
        choices.values.push_back({std::to_string(choice), QString::number(choice)});
    choices.closed = true;
    return choices;
}

/// With the values that the option has and had, which always can be chosen.
OptionChoices WithOwn(OptionChoices choices, const OptionField& field) {
    for (const std::string& own : {field.original, field.value}) {
        const std::string choice = ChoiceOfValue(field.name, own);
        const bool known =
            std::ranges::any_of(choices.values, [&](const auto& entry) { return entry.value == choice; });
        if (known) continue;
        const QString label = field.name == optionName::DefaultPrinter && !own.empty() && choices.closed
                                  ? text::Of(text::options::NotInstalled).arg(ToQt(own))
                                  : LabelOfValue(field.name, own);
        const bool nameless = label.isEmpty() && choices.closed;
        choices.values.push_back({own, nameless ? text::Of(text::options::Empty) : label});
    }
    return choices;
}

} // namespace

OptionRow::OptionRow(OptionRowSource source, int labelWidth) : source_(std::move(source)) {
    const OptionField& field = source_.field();
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 2, 0, 2);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(2);
    if (field.kind == OptionKind::Note) {
        MakeNote(field, *grid);
        return;
    }
    marker_ = PlainLabel();
    marker_->setFixedWidth(fontMetrics().horizontalAdvance(QChar(0x25CF)) + 2);
    marker_->setForegroundRole(QPalette::Highlight);
    KeepPlace(*marker_);
    const bool captioned = field.kind == OptionKind::Check || field.radioGroup >= 0;
    label_ = PlainLabel(captioned ? QString() : field.label);
    KeepPlace(*label_);
    label_->setVisible(!captioned);
    editor_ = MakeEditor(field);
    editor_->setObjectName(ToQt(field.name));
    editor_->setAccessibleName(field.label);
    editor_->setEnabled(field.editable);

    reset_ = new QToolButton;
    reset_->setObjectName("reset " + ToQt(field.name));
    reset_->setIcon(style()->standardIcon(QStyle::SP_BrowserReload));
    reset_->setAutoRaise(true);
    reset_->setFocusPolicy(Qt::StrongFocus);
    reset_->setAccessibleName(text::Of(text::options::ResetOne).arg(field.label));
    KeepPlace(*reset_);
    connect(reset_, &QToolButton::clicked, this, [this] {
        FocusEditor();
        source_.reset();
    });

    notice_ = new Notice;
    grid->addWidget(marker_, 0, 0);
    grid->addWidget(label_, 0, 1);
    grid->addWidget(editor_, 0, 2);
    grid->addWidget(reset_, 0, 3);
    grid->addWidget(notice_, 1, 1, 1, 3);
    grid->setColumnStretch(2, 1);
    SetLabelWidth(labelWidth);
    Refresh();
}

void OptionRow::SetLabelWidth(int width) {
    if (label_) label_->setFixedWidth(width);
}

void OptionRow::MakeNote(const OptionField& field, QGridLayout& grid) {
    const bool isHeading = IsBlankLabel(field.value);
    auto* note = PlainLabel(isHeading ? field.label : ToQt(field.value));
    note->setObjectName(ToQt(field.name));
    if (isHeading) {
        QFont font = note->font();
        font.setBold(true);
        note->setFont(font);
    }
    grid.addWidget(note, 0, 0);
}

QWidget* OptionRow::MakeEditor(const OptionField& field) {
    if (field.kind == OptionKind::Check) return MakeCheck(field);
    if (field.radioGroup >= 0) return MakeSwitch(field);
    if (field.kind == OptionKind::Choice) return MakeCombo(field, WithOwn(source_.choices(), field));
    if (field.kind == OptionKind::Radio) {
        OptionChoices choices = source_.choices();
        if (choices.values.empty()) choices = NumberedChoices(field.original);
        if (!choices.values.empty()) return MakeRadios(field, WithOwn(std::move(choices), field));
    }
    const bool several = field.value.size() > longText || field.value.find('\n') != std::string::npos;
    return several ? MakeLines(field) : MakeLine(field);
}

QWidget* OptionRow::MakeCheck(const OptionField& field) {
    auto* box = new QCheckBox(EscapedMnemonics(field.label));
    connect(box, &QCheckBox::toggled, this,
            [this](bool on) { source_.set(SwitchValue(source_.field(), on)); });
    put_ = [box](const std::string& value) { box->setChecked(IsOn(value)); };
    return box;
}

QWidget* OptionRow::MakeSwitch(const OptionField& field) {
    auto* button = new QRadioButton(EscapedMnemonics(field.label));
    button->setAutoExclusive(false); // the others of its group stand in other rows
    connect(button, &QRadioButton::clicked, this, [this, button] {
        const QSignalBlocker quiet(button);
        button->setChecked(true);
        source_.set(SwitchValue(source_.field(), true));
    });
    put_ = [button](const std::string& value) { button->setChecked(IsOn(value)); };
    return button;
}

QWidget* OptionRow::MakeRadios(const OptionField& field, const OptionChoices& choices) {
    auto* frame = new QWidget;
    auto* flow = new QHBoxLayout(frame);
    flow->setContentsMargins(0, 0, 0, 0);
    flow->addStretch();
    const auto add = [this, frame, flow, label = field.label](const OptionChoice& choice) {
        auto* button = new QRadioButton(EscapedMnemonics(choice.label), frame);
        button->setAccessibleName(label + ": " + choice.label);
        button->setProperty(valueProperty, QByteArray::fromStdString(choice.value));
        connect(button, &QRadioButton::clicked, this, [this, value = choice.value] { source_.set(value); });
        flow->insertWidget(flow->count() - 1, button);
        return button;
    };
    for (const OptionChoice& choice : choices.values)
        add(choice);
    put_ = [this, frame, add](const std::string& stored) {
        const std::string value = ChoiceOfValue(source_.field().name, stored);
        for (QRadioButton* button : frame->findChildren<QRadioButton*>()) {
            if (button->property(valueProperty).toByteArray().toStdString() != value) continue;
            button->setChecked(true);
            return;
        }
        QRadioButton* button = add({value, LabelOfValue(source_.field().name, value)});
        button->show();
        button->setChecked(true);
    };
    return frame;
}

QWidget* OptionRow::MakeCombo(const OptionField&, const OptionChoices& choices) {
    auto* box = new QComboBox;
    box->setEditable(!choices.closed);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(10);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(new WheelGuard(box));
    for (const OptionChoice& choice : choices.values)
        box->addItem(choice.label, QByteArray::fromStdString(choice.value));
    if (box->isEditable()) {
        box->setCompleter(nullptr); // what is typed is meant, not what it could become
        box->lineEdit()->setMaxLength(std::numeric_limits<int>::max());
        connect(box, &QComboBox::editTextChanged, this, [this, box](const QString& typed) {
            const int known = box->findText(typed, Qt::MatchFixedString | Qt::MatchCaseSensitive);
            source_.set(known < 0 ? FromQt(typed) : box->itemData(known).toByteArray().toStdString());
        });
    } else {
        connect(box, &QComboBox::currentIndexChanged, this,
                [this, box](int index) { source_.set(box->itemData(index).toByteArray().toStdString()); });
    }
    put_ = [this, box](const std::string& stored) {
        const std::string value = ChoiceOfValue(source_.field().name, stored);
        const QByteArray own = QByteArray::fromStdString(value);
        if (!box->isEditable() && box->findData(own) < 0) { // others have chosen what was no choice
            const QString label = LabelOfValue(source_.field().name, value);
            box->addItem(label.isEmpty() ? text::Of(text::options::Empty) : label, own);
        }
        const int index = box->findData(own);
        if (index >= 0) {
            if (box->currentIndex() != index) box->setCurrentIndex(index);
            if (box->isEditable() && box->currentText() != box->itemText(index))
                box->setEditText(box->itemText(index));
        } else if (box->isEditable() && box->currentText() != ToQt(value)) {
            box->setEditText(ToQt(value));
        }
    };
    return box;
}

QWidget* OptionRow::MakeLine(const OptionField&) {
    auto* line = new QLineEdit;
    line->setMaxLength(std::numeric_limits<int>::max());
    connect(line, &QLineEdit::textEdited, this, [this](const QString& typed) { source_.set(FromQt(typed)); });
    put_ = [line](const std::string& value) {
        if (line->text() == ToQt(value)) return;
        line->setText(ToQt(value));
        line->setCursorPosition(0);
    };
    return line;
}

QWidget* OptionRow::MakeLines(const OptionField&) {
    auto* lines = new QPlainTextEdit;
    lines->setTabChangesFocus(true);
    lines->setFixedHeight(fontMetrics().lineSpacing() * 5);
    connect(lines, &QPlainTextEdit::textChanged, this,
            [this, lines] { source_.set(FromQt(WholeText(*lines))); });
    put_ = [lines](const std::string& value) {
        if (WholeText(*lines) != ToQt(value)) lines->setPlainText(ToQt(value));
    };
    return lines;
}

void OptionRow::Refresh() {
    if (!editor_) return;
    const OptionField& field = source_.field();
    {
        const QSignalBlocker quiet(editor_);
        put_(field.value);
    }
    const bool changed = field.IsChanged();
    marker_->setText(QString(QChar(0x25CF)));
    marker_->setVisible(changed);
    QFont font = this->font();
    font.setBold(changed);
    label_->setFont(font);
    if (field.kind == OptionKind::Check || field.radioGroup >= 0) editor_->setFont(font);
    QString description =
        changed ? text::Of(text::options::Changed).arg(ToQt(field.original).left(200)) : QString();
    if (!field.editable) description = text::Of(text::options::NoPlace);
    marker_->setAccessibleName(description);
    editor_->setAccessibleDescription(description);
    editor_->setToolTip(description.toHtmlEscaped());
    reset_->setVisible(changed);
    reset_->setToolTip(
        text::Of(text::options::ResetOneHint).arg(ToQt(field.original).left(200)).toHtmlEscaped());
    RefreshNotice();
}

void OptionRow::RefreshNotice() {
    const QString trouble = source_.trouble();
    const QString text = trouble.isEmpty() ? source_.warning() : trouble;
    notice_->Put(text, trouble.isEmpty() ? Notice::Mark::Warning : Notice::Mark::Error);
    if (!text.isEmpty()) editor_->setAccessibleDescription(text);
}

void OptionRow::FocusEditor() {
    if (!editor_) return;
    auto* firstRadio = editor_->findChild<QRadioButton*>();
    (firstRadio ? static_cast<QWidget*>(firstRadio) : editor_)->setFocus(Qt::OtherFocusReason);
}

} // namespace desktop
