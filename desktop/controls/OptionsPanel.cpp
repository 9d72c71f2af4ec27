#include "desktop/controls/OptionsPanel.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "core/contract/Messages.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/OptionsPage.h"
#include "desktop/controls/PageList.h"
#include "desktop/controls/Parts.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace desktop {

namespace {

/// The button that Enter means where it has the keyboard. A check box is none: Enter there is OK.
QAbstractButton* PressedByEnter(QWidget* widget) {
    if (auto* button = qobject_cast<QPushButton*>(widget)) return button;
    return qobject_cast<QToolButton*>(widget);
}

} // namespace

OptionsPanel::OptionsPanel(const ControlServices& services, std::function<void(const std::string&)> saved)
    : services_(services), told_(std::move(saved)), pages_(std::make_unique<PageList>(sheet_)),
      search_(new QLineEdit), list_(new QListView), title_(PlainLabel()), resetPage_(new QPushButton),
      body_(new OptionsPage(sheet_, [this](const OptionField& field) { return ChoicesOf(field); })),
      empty_(PlainLabel()), state_(new Notice("state")), ok_(new QPushButton), cancel_(new QPushButton) {
    search_->setObjectName("search");
    search_->setClearButtonEnabled(true);
    list_->setObjectName("pages");
    list_->setModel(pages_.get());
    list_->setUniformItemSizes(true);
    list_->setSpacing(2);
    DimWithoutFocus(*list_);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setTextElideMode(Qt::ElideRight);
    title_->setObjectName("title");
    resetPage_->setObjectName("resetPage");
    resetPage_->setAutoDefault(false);
    empty_->setObjectName("empty");
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setMargin(12);
    KeepPlace(*state_);
    ok_->setObjectName("ok");
    cancel_->setObjectName("cancel");

    auto* sides = new QSplitter(Qt::Horizontal);
    sides->setChildrenCollapsible(false);
    sides->addWidget(list_);
    sides->addWidget(MakeRightSide());
    sides->setStretchFactor(1, 1);
    list_->setMinimumWidth(90);
    sides->setSizes({150, 370});

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(state_, 1);
    bottom->addWidget(ok_);
    bottom->addWidget(cancel_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(search_);
    column->addWidget(sides, 1);
    column->addLayout(bottom);

    body_->SetTabAnchor(list_);
    setTabOrder(search_, list_);
    setTabOrder(list_, resetPage_);
    setTabOrder(resetPage_, ok_);
    setTabOrder(ok_, cancel_);
    ConnectParts();
    Retranslate();
    Search();
    resize(520, 633);
}

OptionsPanel::~OptionsPanel() {
    list_->setModel(nullptr); // the model goes before the view
}

QWidget* OptionsPanel::MakeRightSide() {
    auto* side = new QWidget;
    QFont large = title_->font();
    large.setPointSizeF(large.pointSizeF() * 1.2);
    large.setBold(true);
    title_->setFont(large);
    auto* head = new QHBoxLayout;
    head->addWidget(title_, 1);
    head->addWidget(resetPage_, 0, Qt::AlignTop);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(6, 0, 0, 0);
    column->addLayout(head);
    column->addWidget(body_, 1);
    column->addWidget(empty_, 1);
    return side;
}

void OptionsPanel::ConnectParts() {
    connect(search_, &QLineEdit::textChanged, this, [this] { Search(); });
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (!searching_) ShowPage(current.row());
            });
    connect(resetPage_, &QPushButton::clicked, this, [this] {
        if (!page_) return;
        list_->setFocus(); // the button is about to be disabled
        sheet_.ResetPage(*page_);
        body_->RefreshRows();
        PutState();
    });
    body_->OnEdited([this] { PutState(); });
    connect(ok_, &QPushButton::clicked, this, [this] { Accept(); });
    connect(cancel_, &QPushButton::clicked, this, [this] { Cancel(); });
    const auto* find =
        new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, this, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
}

void OptionsPanel::Load(const std::string& text) {
    if (asking_) { // shown when the component is done
        given_ = text;
        return;
    }
    page_.reset();
    body_->Clear();
    printers_.reset();
    unreadable_.clear();
    lost_.clear();
    notSaved_ = false;
    outside_.reset();
    try {
        OptionSheet sheet;
        if (!text.empty()) sheet.Load(text);
        sheet_ = std::move(sheet);
    } catch (const base::ComponentError& error) {
        sheet_ = OptionSheet();
        unreadable_ = text::Of(text::options::Unreadable).arg(ToQt(error.Description()));
    }
    Search();
}

void OptionsPanel::Search() {
    const std::optional<std::size_t> before = page_;
    const QScopedValueRollback guard(searching_, true);
    pages_->Search(search_->text());
    const int row = before ? std::max(pages_->RowOf(*before), 0) : 0;
    const QModelIndex index = pages_->index(row);
    list_->setCurrentIndex(index);
    ShowPage(index.isValid() ? index.row() : -1);
}

void OptionsPanel::ShowPage(int row) {
    page_.reset();
    if (row < 0) {
        body_->Clear();
    } else {
        page_ = pages_->PageAt(row);
        title_->setText(sheet_.Pages()[*page_].title.left(200));
        body_->setAccessibleName(text::Of(text::options::Page).arg(title_->text()));
        body_->ShowFields(*page_, pages_->FieldsAt(row));
    }
    const bool searching = !search_->text().trimmed().isEmpty();
    empty_->setText(!unreadable_.isEmpty() ? unreadable_
                    : searching ? text::Of(text::options::NothingFound).arg(search_->text().trimmed())
                                : text::Of(text::options::NothingYet));
    empty_->setVisible(!page_);
    body_->setVisible(page_.has_value());
    title_->setVisible(page_.has_value());
    resetPage_->setVisible(page_.has_value());
    PutState();
}

void OptionsPanel::PutState() {
    if (page_) pages_->PageChanged(*page_);
    resetPage_->setEnabled(page_ && sheet_.Pages()[*page_].changes > 0);
    const auto troubles = sheet_.Troubles();
    const std::size_t changes = sheet_.Changes();
    QString state;
    if (!troubles.empty()) {
        state = troubles.front().text;
    } else if (notSaved_ || !lost_.isEmpty()) {
        QStringList told;
        if (notSaved_) told += text::Of(text::options::NotSaved);
        if (!lost_.isEmpty()) told += text::Of(text::options::Lost).arg(lost_);
        state = told.join(' ');
    } else if (changes > 0) {
        state =
            changes == 1 ? text::Of(text::options::OneChange) : text::Of(text::options::Changes).arg(changes);
    }
    state_->Put(state, !troubles.empty() || notSaved_ ? Notice::Mark::Error
                       : !lost_.isEmpty()             ? Notice::Mark::Warning
                                                      : Notice::Mark::None);
    ok_->setEnabled(!sheet_.Pages().empty());
}

void OptionsPanel::FollowOptions() {
    if (!services_.onNewOptions) return;
    if (!std::exchange(following_, true)) {
        services_.onNewOptions(this, [this](const std::string& options) {
            if (sending_ && options == *sending_) { // told only of what is in the file
                saved_ = true;
                return;
            }
            if (!isVisible()) return;
            if (!outside_) QTimer::singleShot(0, this, &OptionsPanel::TakeInOutside);
            outside_ = options;
        });
    }
    // whoever asks for its options is told of new ones from then on
    constexpr auto textType = static_cast<std::int32_t>(arvon::ParameterType::Text);
    const std::array parameters{arvon::host::ParameterRecord{"ToolID", textType, base::Value(controlSource)}};
    Ask("GetOptionData", parameters);
}

bool OptionsPanel::TakeInOutside() {
    if (!outside_ || asking_ || sending_) return true;
    const std::string options = *std::exchange(outside_, {});
    const std::string shown = page_ ? sheet_.Pages()[*page_].toolId : std::string();
    const QWidget* focused = focusWidget();
    const QString option = focused && body_->isAncestorOf(focused) ? focused->objectName() : QString();
    OptionSheet::Rebased rebased;
    try {
        rebased = sheet_.Rebase(options);
    } catch (const base::ComponentError&) {
        return true; // the component keeps what it has, and so does this
    }
    unreadable_.clear();
    if (!rebased.lost.empty()) lost_ = QStringList(rebased.lost.begin(), rebased.lost.end()).join(", ");
    if (rebased.looksTheSame) {
        body_->RefreshRows();
        pages_->PagesChanged();
        PutState();
    } else {
        ShowPageOf(shown, option);
    }
    return rebased.lost.empty();
}

void OptionsPanel::ShowPageOf(const std::string& toolId, const QString& focusedOption) {
    const auto page = std::ranges::find(sheet_.Pages(), toolId, &OptionPage::toolId);
    page_.reset();
    if (page != sheet_.Pages().end()) page_ = static_cast<std::size_t>(page - sheet_.Pages().begin());
    Search();
    if (!page_ || focusedOption.isEmpty()) return;
    const std::vector<OptionField>& fields = sheet_.Pages()[*page_].fields;
    const auto field = std::ranges::find(fields, FromQt(focusedOption), &OptionField::name);
    if (field != fields.end()) body_->FocusField(static_cast<std::size_t>(field - fields.begin()));
}

void OptionsPanel::Accept() {
    if (sending_) return;
    notSaved_ = false;
    if (!TakeInOutside()) return; // told what is lost: the next OK goes on without it
    if (const auto troubles = sheet_.Troubles(); !troubles.empty()) {
        GoTo(troubles.front().page, troubles.front().field);
        return;
    }
    if (sheet_.Pages().empty()) return;
    const std::string options = sheet_.Text();
    const QPointer<OptionsPanel> self(this); // whatever is asked may take the window away
    const bool saved = Send(options);
    if (!self) return;
    notSaved_ = !saved;
    if (!saved) {
        TakeInOutside();
        PutState();
        return;
    }
    lost_.clear();
    if (told_) told_(options);
    sending_ = options;
    Ask("UnloadOptionsTool");
    if (!self) return;
    sending_.reset();
    // where the window stays, it goes on from what was saved, or from what came even later
    if (!outside_) outside_ = options;
    QTimer::singleShot(0, this, [this] {
        if (isVisible()) {
            TakeInOutside();
        } else {
            outside_.reset();
        }
    });
}

bool OptionsPanel::Send(const std::string& options) {
    constexpr auto textType = static_cast<std::int32_t>(arvon::ParameterType::Text);
    const std::array parameters{arvon::host::ParameterRecord{"Options", textType, base::Value(options)}};
    const QPointer<OptionsPanel> self(this);
    sending_ = options;
    saved_ = !services_.onNewOptions; // nobody could tell
    Ask("UpdateOptions", parameters);
    if (!self) return false;
    sending_.reset();
    return saved_;
}

void OptionsPanel::Cancel() {
    if (!sending_) Ask("UnloadOptionsTool");
}

void OptionsPanel::GoTo(std::size_t page, std::size_t field) {
    const int row = pages_->RowOf(page);
    if (row < 0 || std::ranges::find(pages_->FieldsAt(row), field) == pages_->FieldsAt(row).end())
        search_->clear();
    list_->setCurrentIndex(pages_->index(pages_->RowOf(page)));
    body_->FocusField(field);
}

OptionChoices OptionsPanel::ChoicesOf(const OptionField& field) {
    if (field.name == optionName::DefaultPrinter) return Printers();
    const QStringList values = services_.choices ? services_.choices(ToQt(field.name)) : QStringList();
    if (values.empty()) return ChoicesOfOption(field.name);
    OptionChoices choices;
    choices.closed = true;
    for (const QString& value : values)
        choices.values.push_back({FromQt(value), LabelOfValue(field.name, FromQt(value))});
    return choices;
}

OptionChoices OptionsPanel::Printers() {
    if (printers_) return *printers_;
    OptionChoices printers;
    printers.closed = true;
    try {
        base::XmlDocument document;
        const std::string answer = Ask("EnumPrinters");
        if (!answer.empty()) document.LoadText(answer);
        for (const base::XmlNode& printer : document.Select("/Printers/Printer"))
            printers.values.push_back({printer.Text(), ToQt(printer.Text())});
    } catch (const base::ComponentError&) {
        printers.values.clear(); // as without printers: the one in force can still be kept
    }
    printers_ = printers;
    return printers;
}

std::string OptionsPanel::Ask(std::string_view type,
                              std::span<const arvon::host::ParameterRecord> parameters) const {
    const auto request = services_.request; // the panel may go while it is carried out
    return request ? request(type, parameters, controlSource) : std::string();
}

void OptionsPanel::Retranslate() {
    setAccessibleName(text::Of(text::options::Panel));
    search_->setPlaceholderText(text::Of(text::options::Search));
    search_->setAccessibleName(text::Of(text::options::Search));
    search_->setAccessibleDescription(text::Of(text::options::SearchHint));
    search_->setToolTip(text::Of(text::options::SearchHint));
    list_->setAccessibleName(text::Of(text::options::Programs));
    body_->setAccessibleName(text::Of(text::options::Panel));
    NameButton(*resetPage_, text::Of(text::options::ResetPage), text::Of(text::options::ResetPageHint));
    NameButton(*ok_, text::Of(text::options::Ok), text::Of(text::options::OkHint));
    NameButton(*cancel_, text::Of(text::options::Cancel), text::Of(text::options::CancelHint));
    if (isVisible()) Search(); // the rows are made anew
}

void OptionsPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (event->spontaneous()) return;
    ok_->setDefault(true); // not earlier: it takes a dialog to be its default button
    list_->setFocus();
    const QPointer<OptionsPanel> self(this);
    asking_ = true;
    Ask("InitializeOptions");
    if (!self) return;
    FollowOptions();
    if (!self) return;
    asking_ = false;
    if (const auto given = std::exchange(given_, {})) Load(*given);
}

void OptionsPanel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (QAbstractButton* button = PressedByEnter(focusWidget())) {
            button->click();
        } else if (search_->hasFocus()) {
            if (page_) body_->FocusField(pages_->FieldsAt(list_->currentIndex().row()).front());
        } else if (ok_->isEnabled()) {
            ok_->click();
        }
        return;
    case Qt::Key_Escape:
        if (search_->hasFocus() && !search_->text().isEmpty()) {
            search_->clear();
        } else {
            cancel_->click();
        }
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace desktop
