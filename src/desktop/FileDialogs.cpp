#include "desktop/FileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <utility>

#include "platform/Paths.h"
#include "support/frmText.h"

namespace quillform {

namespace {

/// "*.mdb", "*.dat;*.txt", ".REP": something that could be meant for the names of files, and for no reader.
bool IsPattern(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral("^[*?.][^()|\\s]*(?:[;\\s]+[*?.][^()|\\s]*)*$"));
    return pattern.match(text).hasMatch();
}

/// What stands in the last brackets of a text, if it is a pattern.
QString PatternInside(const QString& text) {
    static const QRegularExpression brackets(QStringLiteral("\\(([^()]*)\\)\\s*$"));
    const QString inside = brackets.match(text).captured(1).trimmed();
    return IsPattern(inside) ? inside : QString();
}

QString TextBefore(const QString& text) {
    static const QRegularExpression brackets(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    return QString(text).remove(brackets);
}

/// "*.RTF" also as "*.rtf", for dialogs that count the case.
QStringList BothCases(const QString& patterns) {
    static const QRegularExpression between(QStringLiteral("[;\\s]+"));
    QStringList found;
    for (const QString& pattern : patterns.split(between, Qt::SkipEmptyParts)) {
        if (pattern == QLatin1String("*.*")) return {QStringLiteral("*")};  // names without a dot are any names too
        found << pattern << pattern.toLower() << pattern.toUpper();
    }
    found.removeDuplicates();
    return found;
}

QString NameFilter(const QString& text, const QString& patterns) {
    const QString name = TextBefore(text);
    return (name.isEmpty() ? patterns : name) + QStringLiteral(" (") + BothCases(patterns).join(u' ') +
           QStringLiteral(")");
}

/// A dialog for a file that is there. It finds files as the rest of the program does: in any case, and without the
/// extension that they were saved with.
class OpenFileDialog : public QFileDialog {
public:
    OpenFileDialog(QWidget* owner, QString extension) : QFileDialog(owner), extension_(std::move(extension)) {}

    /// The file that a typed name meant; empty if it was there as typed.
    const QString& Meant() const { return meant_; }

protected:
    void accept() override {
        const QStringList chosen = selectedFiles();
        if (chosen.size() != 1 || !FindMeant(chosen.front())) return QFileDialog::accept();
        QDialog::accept();
    }

private:
    bool FindMeant(const QString& typed) {
        if (QFileInfo::exists(typed)) return false;
        for (const QString& name : {typed, typed + u'.' + extension_}) {
            const auto found = FindFile(FromQt(name));
            if (!found) continue;
            meant_ = ToQt(found->path.string());
            return true;
        }
        return false;
    }

    QString extension_;
    QString meant_;
};

/// Of "*.QRY", the name that a dialog proposes, if it has none of its own.
QString ExtensionOf(const FileDialog& dialog) {
    if (!dialog.defaultExtension.empty()) return ToQt(dialog.defaultExtension);
    return QFileInfo(ToQt(dialog.fileName)).suffix();
}

/// A proposed name such as "*.TXT" only says what is looked for.
bool IsName(std::string_view name) { return !name.empty() && name.find_first_of("*?") == std::string_view::npos; }

/// The folder of "/home/me/QUERIES\*.QRY" or of "/home/me"; empty if there is none.
QString FolderOf(std::string_view path) {
    if (path.empty()) return {};
    const QFileInfo whole(ToQt(TargetPath(path).string()));
    return whole.isDir() ? whole.filePath() : whole.path();
}

std::optional<std::string> Show(QFileDialog& shown, const FileDialog& dialog) {
    shown.setWindowTitle(ToQt(dialog.title));
    const QStringList filters = NameFilters(dialog.filter);
    if (!filters.isEmpty()) shown.setNameFilters(filters);
    QString extension = ToQt(dialog.defaultExtension);
    if (extension.startsWith(u'.')) extension.remove(0, 1);
    shown.setDefaultSuffix(extension);
    if (const QString folder = FolderOf(dialog.initialFolder); !folder.isEmpty()) shown.setDirectory(folder);
    if (IsName(dialog.fileName)) shown.selectFile(ToQt(dialog.fileName));
    if (shown.exec() != QDialog::Accepted || shown.selectedFiles().isEmpty()) return std::nullopt;
    return FromQt(shown.selectedFiles().front());
}

}  // namespace

QStringList NameFilters(std::string_view filter) {
    QStringList parts;
    for (const QString& part : ToQt(filter).split(u'|'))
        if (const QString trimmed = part.trimmed(); !trimmed.isEmpty()) parts << trimmed;
    QStringList filters;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& text = parts[i];
        const bool isPaired = i + 1 < parts.size() && IsPattern(parts[i + 1]);
        if (isPaired && !IsPattern(text)) {
            filters << NameFilter(text, parts[++i]);
        } else if (IsPattern(text)) {
            // Written the other way round, pattern before text, where no pattern follows the text.
            const bool namedNext = i + 1 < parts.size() && !isPaired && PatternInside(parts[i + 1]).isEmpty() &&
                                   (i + 2 >= parts.size() || !IsPattern(parts[i + 2]));
            filters << NameFilter(namedNext ? parts[++i] : QString(), text);
        } else if (const QString pattern = PatternInside(text); !pattern.isEmpty()) {
            filters << NameFilter(text, pattern);
        } else {
            filters << NameFilter(text, QStringLiteral("*.*"));
        }
    }
    return filters;
}

std::optional<std::string> ShowSaveDialog(const FileDialog& dialog, QWidget* owner) {
    QFileDialog shown(owner);
    shown.setAcceptMode(QFileDialog::AcceptSave);
    shown.setFileMode(QFileDialog::AnyFile);
    return Show(shown, dialog);
}

std::optional<std::string> ShowOpenDialog(const FileDialog& dialog, QWidget* owner) {
    OpenFileDialog shown(owner, ExtensionOf(dialog));
    shown.setAcceptMode(QFileDialog::AcceptOpen);
    shown.setFileMode(QFileDialog::ExistingFile);
    const std::optional<std::string> chosen = Show(shown, dialog);
    return chosen && !shown.Meant().isEmpty() ? FromQt(shown.Meant()) : chosen;
}

}  // namespace quillform
