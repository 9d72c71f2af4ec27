#include "desktop/trace/TraceModel.h"

#include "base/ComponentError.h"
#include "desktop/QtText.h"
#include "desktop/trace/TraceTexts.h"
#include "host/ReferenceHost.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace desktop {

using arvon::host::MessageRecord;

namespace {

constexpr qsizetype shownCharacters = 300;
constexpr qsizetype detailCharacters = 100'000;

QString ValueText(const base::Value& value) {
    try {
        return ToQt(value.ToText());
    } catch (const base::ComponentError&) {
        return {};
    }
}

QString OneLine(const QString& text) {
    QString line = text.left(shownCharacters);
    for (QChar& character : line)
        if (character == '\n' || character == '\r' || character == '\t') character = QChar(0x23CE);
    return text.size() > shownCharacters ? line + QChar(0x2026) : line;
}

QString NameOf(const MessageRecord& message) {
    if (message.kind == MessageRecord::Kind::Custom) return QString("message %1").arg(message.type);
    const QString kind = message.kind == MessageRecord::Kind::Request ? "request" : "event";
    if (message.name.empty()) return kind;
    const QString name = kind + ' ' + OneLine(ToQt(message.name));
    const bool hasKind = message.kind == MessageRecord::Kind::Event && message.category != 0;
    return hasKind ? name + QString(" (%1)").arg(message.category) : name;
}

QString ParametersOf(const MessageRecord& message) {
    if (message.malformed || message.kind == MessageRecord::Kind::Custom) return OneLine(ToQt(message.body));
    QStringList parts;
    for (const auto& parameter : message.parameters)
        parts += OneLine(ToQt(parameter.name)) + "=\"" + OneLine(ValueText(parameter.value)) + '"';
    return OneLine(parts.join("  "));
}

const text::Own& DirectionOf(const MessageRecord& message) {
    if (message.destination == arvon::host::listenerId::Component) return text::trace::In;
    if (message.source == arvon::host::listenerId::Component) return text::trace::Out;
    return text::trace::Past;
}

QString DurationOf(const TraceNode& node) {
    if (!node.finished) return {};
    const double milliseconds = std::chrono::duration<double, std::milli>(node.message.duration).count();
    return text::Of(text::trace::Milliseconds).arg(milliseconds, 0, 'f', milliseconds < 10 ? 3 : 1);
}

} // namespace

TraceModel::TraceModel(TraceLimits limits, QIcon warning, QIcon error)
    : limits_(limits), warning_(std::move(warning)), error_(std::move(error)) {}

void TraceModel::Append(std::vector<std::unique_ptr<TraceNode>> nodes) {
    if (nodes.empty()) return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(nodes.size()) - 1);
    for (std::unique_ptr<TraceNode>& node : nodes) {
        node->row = firstRow_ + roots_.size();
        messages_ += node->messages;
        bytes_ += node->bytes;
        roots_.push_back(std::move(node));
    }
    endInsertRows();
    DropSurplus();
}

void TraceModel::DropSurplus() {
    std::size_t surplus = 0;
    std::size_t messages = messages_;
    std::size_t bytes = bytes_;
    // the newest stays, however large
    while (surplus + 1 < roots_.size() && (messages > limits_.messages || bytes > limits_.bytes)) {
        messages -= roots_[surplus]->messages;
        bytes -= roots_[surplus]->bytes;
        ++surplus;
    }
    if (surplus == 0) return;
    beginRemoveRows({}, 0, static_cast<int>(surplus) - 1);
    roots_.erase(roots_.begin(), roots_.begin() + static_cast<std::ptrdiff_t>(surplus));
    firstRow_ += surplus;
    messages_ = messages;
    bytes_ = bytes;
    dropped_ = true;
    endRemoveRows();
}

void TraceModel::Clear() {
    beginResetModel();
    roots_.clear();
    messages_ = bytes_ = firstRow_ = 0;
    dropped_ = false;
    endResetModel();
}

const TraceNode* TraceModel::NodeAt(const QModelIndex& index) {
    return index.isValid() ? static_cast<const TraceNode*>(index.internalPointer()) : nullptr;
}

QModelIndex TraceModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    const TraceNode* outer = NodeAt(parent);
    const auto place = static_cast<std::size_t>(row);
    return createIndex(row, column, outer ? outer->children[place].get() : roots_[place].get());
}

QModelIndex TraceModel::parent(const QModelIndex& index) const {
    const TraceNode* node = NodeAt(index);
    if (!node || !node->parent) return {};
    const std::size_t row = node->parent->parent ? node->parent->row : node->parent->row - firstRow_;
    return createIndex(static_cast<int>(row), 0, node->parent);
}

int TraceModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0) return 0;
    const TraceNode* node = NodeAt(parent);
    return static_cast<int>(node ? node->children.size() : roots_.size());
}

int TraceModel::columnCount(const QModelIndex&) const {
    return Columns;
}

QString TraceModel::StateOf(const TraceNode& node) {
    QStringList states;
    switch (TroubleOf(node)) {
    case Trouble::Failed:
        states += text::Of(text::trace::Failed).arg(OneLine(ToQt(node.message.failure)));
        break;
    case Trouble::Malformed:
        states += text::Of(text::trace::Malformed);
        break;
    case Trouble::NobodyListens:
        states += text::Of(text::trace::NobodyListens);
        break;
    case Trouble::ErrorReport:
        states += text::Of(text::trace::ErrorReport);
        break;
    case Trouble::Unfinished:
        states += text::Of(text::trace::Unfinished);
        break;
    case Trouble::None:
        break;
    }
    if (node.inside > 0) states += text::Of(text::trace::Inside).arg(node.inside);
    if (node.omitted > 0) states += text::Of(text::trace::Omitted).arg(node.omitted);
    return states.join("; ");
}

QString TraceModel::TextAt(const TraceNode& node, int column) {
    switch (column) {
    case Message:
        return NameOf(node.message);
    case Direction:
        return text::Of(DirectionOf(node.message));
    case From:
        return OneLine(ToQt(node.message.source));
    case To:
        return OneLine(ToQt(node.message.destination));
    case Parameters:
        return ParametersOf(node.message);
    case Reply:
        return OneLine(ToQt(node.message.reply));
    case Duration:
        return DurationOf(node);
    case State:
        return StateOf(node);
    default:
        return {};
    }
}

QVariant TraceModel::data(const QModelIndex& index, int role) const {
    const TraceNode* node = NodeAt(index);
    if (!node) return {};
    switch (role) {
    case Qt::DisplayRole:
        return TextAt(*node, index.column());
    case Qt::ToolTipRole: {
        const QString text = TextAt(*node, index.column());
        // without any tag the text would be taken for a plain one, and its escapes shown
        return text.isEmpty() ? QVariant() : QVariant("<span>" + text.toHtmlEscaped() + "</span>");
    }
    case Qt::DecorationRole: {
        if (index.column() != Message) return {};
        const Trouble trouble = TroubleOf(*node);
        if (trouble == Trouble::None) return node->inside > 0 ? QVariant(warning_) : QVariant();
        return trouble == Trouble::Failed || trouble == Trouble::ErrorReport ? error_ : warning_;
    }
    case Qt::TextAlignmentRole:
        if (index.column() == Duration) return QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
        return {};
    case Qt::AccessibleDescriptionRole:
        return StateOf(*node);
    default:
        return {};
    }
}

QVariant TraceModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section >= Columns)
        return {};
    return text::Of(text::trace::Columns[section]);
}

QString TraceModel::DetailsOf(const TraceNode& node) {
    const MessageRecord& message = node.message;
    const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(node.when.time_since_epoch());
    const QString when = QDateTime::fromMSecsSinceEpoch(since.count()).toString("HH:mm:ss.zzz");
    QString details = NameOf(message) + '\n' + ToQt(message.source) + " \u2192 " + ToQt(message.destination) +
                      ", " + when + (node.finished ? ", " + DurationOf(node) : QString()) + '\n';
    if (const QString state = StateOf(node); !state.isEmpty()) details += state + '\n';
    if (!message.failure.empty()) details += ToQt(message.failure) + '\n';
    if (message.malformed || message.kind == MessageRecord::Kind::Custom)
        details += '\n' + ToQt(message.body) + '\n';
    for (const auto& parameter : message.parameters)
        details += "\n" + ToQt(parameter.name) + " = " + ValueText(parameter.value);
    if (!message.reply.empty()) details += "\n\n\u21D0 " + ToQt(message.reply);
    return details.size() > detailCharacters ? details.left(detailCharacters) + QChar(0x2026) : details;
}

void TraceFilter::SetText(const QString& text) {
    text_ = text.trimmed();
    invalidateFilter();
}

void TraceFilter::SetListener(const QString& listener) {
    listener_ = FromQt(listener);
    invalidateFilter();
}

void TraceFilter::SetOnlyTroubles(bool only) {
    onlyTroubles_ = only;
    invalidateFilter();
}

bool TraceFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
    const TraceNode* node = TraceModel::NodeAt(sourceModel()->index(row, 0, parent));
    if (!node) return false;
    const MessageRecord& message = node->message;
    if (!listener_.empty() && message.source != listener_ && message.destination != listener_) return false;
    if (onlyTroubles_ && TroubleOf(*node) == Trouble::None) return false;
    const auto holds = [&](const QString& text) { return text.contains(text_, Qt::CaseInsensitive); };
    if (text_.isEmpty() || holds(NameOf(message)) || holds(ToQt(message.source)) ||
        holds(ToQt(message.destination)) || holds(ToQt(message.reply)) || holds(ToQt(message.body)) ||
        holds(ToQt(message.failure)))
        return true;
    return std::ranges::any_of(message.parameters, [&](const auto& parameter) {
        return holds(ToQt(parameter.name)) || holds(ValueText(parameter.value));
    });
}

} // namespace desktop
