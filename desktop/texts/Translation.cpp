#include "desktop/texts/Translation.h"

#include "base/ComponentError.h"
#include "platform/CodePage.h"
#include "platform/StringModules.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QPointer>

#include <utility>
#include <vector>

namespace desktop::text {

namespace {

constexpr std::size_t longestText = 4096; // bytes, with the NUL

/// The texts of one language, read when they are first asked for.
class Module {
public:
    explicit Module(const QString& language)
        : file_(QCoreApplication::applicationDirPath() + QLatin1String("/texts/") + language +
                QLatin1String("/Desktop.dll")) {
        if (!language.contains(u'/')) file_.open(QIODevice::ReadOnly);
    }

    QString Text(int id) {
        if (!file_.isOpen()) return {};
        const auto known = texts_.constFind(id);
        if (known != texts_.constEnd()) return *known;
        const std::string ansi =
            modules_->LoadString(file_.handle(), static_cast<std::uint32_t>(id), longestText);
        return *texts_.insert(id, QString::fromStdString(codePage_->FromAnsi(ansi)));
    }

private:
    QFile file_;
    std::unique_ptr<platform::StringModules> modules_ = platform::StringModules::Create();
    std::unique_ptr<platform::CodePage> codePage_ = platform::CodePage::Create();
    QHash<int, QString> texts_;
};

struct Follower {
    QPointer<QObject> owner;
    std::function<void()> put;
};

struct State {
    QString language;
    std::unique_ptr<Module> module; // none: English
    std::vector<Follower> followers;
};
State& Current() {
    static State state;
    return state;
}

} // namespace

QString Of(const Own& own) {
    const QString translated = Current().module && own.id ? Current().module->Text(own.id) : QString();
    return translated.isEmpty() ? QString::fromUtf8(own.english) : translated;
}

void UseLanguage(const QString& language) {
    State& state = Current();
    if (state.language == language) return;
    state.language = language;
    state.module = std::make_unique<Module>(language);
    std::erase_if(state.followers, [](const Follower& follower) { return !follower.owner; });
    const std::vector<Follower> followers = state.followers; // one may bring another
    for (const Follower& follower : followers)
        if (follower.owner) follower.put();
}

void Follow(QObject* owner, std::function<void()> put) {
    put();
    Current().followers.push_back({owner, std::move(put)});
}

} // namespace desktop::text
