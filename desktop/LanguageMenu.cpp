#include "desktop/LanguageMenu.h"

#include "core/contract/Framework.h"
#include "desktop/HostBridge.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QActionGroup>
#include <QLocale>
#include <QPointer>
#include <QScopeGuard>

#include <array>

namespace desktop {

namespace {

/// "Deutsch" of the installation's "1031", as far as Windows' numbers are known here.
QString LanguageName(const QString& id) {
    struct Known {
        const char* id;
        QLocale::Language language;
    };
    constexpr std::array known{
        Known{"1031", QLocale::German},  Known{"1033", QLocale::English},    Known{"1034", QLocale::Spanish},
        Known{"1036", QLocale::French},  Known{"1040", QLocale::Italian},    Known{"1043", QLocale::Dutch},
        Known{"1045", QLocale::Polish},  Known{"1046", QLocale::Portuguese}, Known{"1049", QLocale::Russian},
        Known{"1053", QLocale::Swedish},
    };
    for (const Known& one : known) {
        if (id != QLatin1String(one.id)) continue;
        QString name = QLocale(one.language).nativeLanguageName();
        if (one.language == QLocale::English) name = QStringLiteral("English");
        return name.left(1).toUpper() + name.mid(1);
    }
    return id;
}

} // namespace

LanguageMenu::LanguageMenu(HostBridge& bridge, QWidget* parent) : QMenu(parent), bridge_(bridge) {
    setObjectName(QStringLiteral("mnuLanguage"));
    text::Follow(this, [this] {
        setTitle(text::Of(text::window::Language));
        menuAction()->setStatusTip(text::Of(text::window::LanguageHint));
    });
    auto* group = new QActionGroup(this);
    for (const QString& id : bridge_.Languages()) {
        QAction* action = addAction(LanguageName(id));
        action->setObjectName(QLatin1String("language") + id);
        action->setData(id);
        action->setCheckable(true);
        group->addAction(action);
    }
    connect(group, &QActionGroup::triggered, this, [this](const QAction* action) {
        // the click has moved the mark there already, whatever the host answers
        bridge_.Do([menu = QPointer(this),
                    language = FromQt(action->data().toString())](arvon::host::ReferenceHost& host) {
            const auto mark = qScopeGuard([&menu] {
                if (menu) menu->MarkCurrent();
            });
            host.Framework()->SwitchLanguage(language);
        });
    });
}

void LanguageMenu::MarkCurrent() {
    const QString language = ToQt(bridge_.Model().Language());
    for (QAction* action : actions())
        action->setChecked(action->data().toString() == language);
}

} // namespace desktop
