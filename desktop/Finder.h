#pragma once

#include <QDialog>
#include <QIcon>
#include <QString>

#include <functional>
#include <vector>

class QLineEdit;
class QListView;

namespace desktop {

/// Something that the finder can find and do.
struct FinderEntry {
    QString text; // "Launch Layout"
    QString kind; // "Program", "Tools", "Task"
    QString hint; // a sentence
    QString keys; // shortcut, as text
    QIcon icon;
    std::function<void()> run;
};

/// Programs and commands by a part of their names: type, choose, Enter.
class Finder final : public QDialog {
    Q_OBJECT

public:
    explicit Finder(QWidget* parent);
    ~Finder() override;

    /// Opens with these entries, nothing typed.
    void Open(std::vector<FinderEntry> entries);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Model;
    class Delegate;

    void Filter(const QString& typed);
    void Run();

    QLineEdit* typed_;
    QListView* found_;
    Model* model_;
};

} // namespace desktop
