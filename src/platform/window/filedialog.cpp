// The dialogs for files and folders.
#include "platform/base/codepages.h"
#include "platform/base/paths.h"
#include "platform/window/dialogs.h"
#include "platform/window/surface.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTreeView>
#include <algorithm>
#include <dirent.h>
#include <filesystem>
#include <map>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

// ---- Names that are no text
//
// The library knows names as text. One whose bytes are no UTF-8 it leaves out of its lists, and a
// dialog of the desktop that shows it gives it back with U+FFFD in place of those bytes. So such
// names have a list of their own in the library's dialog, and what a dialog gives back is looked
// up among the real names of its directory.

QString shown(const std::string& bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

bool isText(const std::string& bytes) { return shown(bytes).toUtf8().toStdString() == bytes; }

// All names of a directory but "." and "..", sorted by their bytes; none when it cannot be read.
std::vector<std::string> namesIn(const std::string& directory) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(directory.c_str()), ::closedir);
    if (!open) return names;
    while (const dirent* entry = ::readdir(open.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

bool exists(const std::string& path) {
    struct stat state {};
    return ::stat(path.c_str(), &state) == 0;
}

bool isDirectory(const std::string& path) {
    struct stat state {};
    return ::stat(path.c_str(), &state) == 0 && S_ISDIR(state.st_mode);
}

std::string join(const std::string& directory, const std::string& name) {
    return directory.ends_with('/') ? directory + name : directory + '/' + name;
}

// Of an absolute path; the root's is the root.
std::string directoryOf(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

struct Resolved {
    std::string path;
    QString ambiguous;  // the part of the way that several names fit
};

// The real path behind an absolute one that a dialog has given. A name that nothing fits is a new
// one, and stays as it is.
Resolved resolve(const QString& path) {
    Resolved result;
    result.path = "/";
    for (const QString& part : path.split(u'/', Qt::SkipEmptyParts)) {
        const std::string name = part.toUtf8().toStdString();
        std::string next = join(result.path, name);
        if (part.contains(QChar::ReplacementCharacter) && !exists(next)) {
            std::vector<std::string> fitting = namesIn(result.path);
            std::erase_if(fitting, [&](const std::string& n) { return shown(n) != part; });
            if (fitting.size() > 1) result.ambiguous = QDir(shown(result.path)).filePath(part);
            if (!fitting.empty()) next = join(result.path, fitting.front());
        }
        result.path = next;
    }
    return result;
}

// The list of such names in the directory that the dialog shows. A directory among them opens in
// the list itself, with all that is in it.
class OddNames final : public QListWidget {
public:
    explicit OddNames(bool directoriesOnly) : m_directoriesOnly(directoriesOnly) {
        setMaximumHeight(fontMetrics().lineSpacing() * 6);
        connect(this, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
            if (isDirectory(pathOf(*item))) {
                enter(pathOf(*item), true);
            } else if (m_chosen) {
                m_chosen(pathOf(*item));
            }
        });
    }

    // all: every name; else only those that the library leaves out.
    void enter(const std::string& directory, bool all) {
        clear();
        m_directory = directory;
        if (all) add("..");
        for (const std::string& name : namesIn(directory)) {
            if (!all && isText(name)) continue;
            const bool inner = isDirectory(join(directory, name));
            if (!inner && (m_directoriesOnly || !QDir::match(m_patterns, shown(name)))) continue;
            add(name);
        }
    }
    void setPatterns(const QStringList& patterns) { m_patterns = patterns; }
    void onChosen(std::function<void(const std::string&)> chosen) { m_chosen = std::move(chosen); }

    void select(const std::string& path) {
        for (int row = 0; row < count(); ++row) {
            if (pathOf(*item(row)) == path) setCurrentRow(row);
        }
    }
    // The path of the selected name; empty without one.
    [[nodiscard]] std::string selected() const {
        const QList<QListWidgetItem*> items = selectedItems();
        return items.empty() ? std::string() : pathOf(*items.front());
    }

private:
    void add(const std::string& name) {
        auto* item = new QListWidgetItem(shown(name), this);  // the list owns it
        item->setData(Qt::UserRole, QByteArray::fromStdString(name));
    }
    [[nodiscard]] std::string pathOf(const QListWidgetItem& item) const {
        const std::string name = item.data(Qt::UserRole).toByteArray().toStdString();
        return name == ".." ? directoryOf(m_directory) : join(m_directory, name);
    }

    bool m_directoriesOnly;
    std::string m_directory;
    QStringList m_patterns{QStringLiteral("*")};
    std::function<void(const std::string&)> m_chosen;
};

// ---- The dialog

class PathDialog final : public QFileDialog {
public:
    PathDialog(QWidget* parent, bool directoriesOnly) : QFileDialog(parent) {
        if (directoriesOnly) {
            setFileMode(Directory);
            setOption(ShowDirsOnly);
        }
        // Without a layout the desktop's own dialog is used, which shows all names.
        auto* grid = qobject_cast<QGridLayout*>(layout());
        if (grid == nullptr) return;
        fitColumns();
        m_odd = new OddNames(directoriesOnly);
        m_oddLabel = new QLabel(tr("Names with unknown characters:"));
        const int row = grid->rowCount();
        grid->addWidget(m_oddLabel, row, 0, 1, grid->columnCount());
        grid->addWidget(m_odd, row + 1, 0, 1, grid->columnCount());
        m_odd->onChosen([this](const std::string& path) { choose(path); });
        connect(this, &QFileDialog::directoryEntered, this, [this] { showOdd(); });
        connect(this, &QFileDialog::filterSelected, this, [this] { showOdd(); });
        // What was chosen or typed last counts.
        connect(this, &QFileDialog::currentChanged, this, [this] { m_odd->clearSelection(); });
        if (auto* name = findChild<QLineEdit*>()) {
            connect(name, &QLineEdit::textChanged, this, [this] { m_odd->clearSelection(); });
        }
        connect(m_odd, &QListWidget::itemSelectionChanged, this, [this] {
            // The library sees no name in its own field.
            auto* buttons = findChild<QDialogButtonBox*>();
            QPushButton* open =
                buttons == nullptr ? nullptr : buttons->button(QDialogButtonBox::Open);
            if (open != nullptr && !m_odd->selected().empty()) open->setEnabled(true);
        });
    }

    // Starts in a directory of startDirectory. The library can show one only when its name is text:
    // the list opens any other one, and the library shows the next around it.
    void startIn(const std::string& directory) {
        std::string shownByLibrary = directory;
        while (!isText(shownByLibrary)) shownByLibrary = directoryOf(shownByLibrary);
        setDirectory(QFile::decodeName(shownByLibrary.c_str()));
        showOdd();
        if (m_odd == nullptr || shownByLibrary == directory) return;
        if (fileMode() == Directory) {  // itself can be chosen there
            const std::string around = directoryOf(directory);
            showOdd(around, around != shownByLibrary);
            m_odd->select(directory);
        } else {
            showOdd(directory, true);
        }
    }

    // Starts with a name in the directory of startIn.
    void startWith(const std::string& directory, const std::string& name) {
        if (isText(name)) {
            selectFile(shown(name));
        } else if (m_odd != nullptr) {
            m_odd->select(join(directory, name));
        }
    }

    // The extension of a typed name that has none; for opening, if it is not there as it is.
    void setExtension(const QString& extension) {
        m_extension = extension;
        if (isSave()) setDefaultSuffix(extension);
    }

    void showOdd() {
        if (m_odd == nullptr) return;
        const QString filter = selectedNameFilter();
        const qsizetype open = filter.lastIndexOf(u'(');
        QStringList patterns;
        if (open >= 0) patterns = filter.mid(open + 1).chopped(1).split(u' ');
        m_odd->setPatterns(patterns.isEmpty() ? QStringList{QStringLiteral("*")} : patterns);
        showOdd(QFile::encodeName(directory().absolutePath()).toStdString(), false);
    }

    // Runs the dialog until a path is there that acceptable takes, or it is cancelled: then the
    // path is empty. acceptable tells the person what is wrong.
    [[nodiscard]] std::string
    run(const std::function<bool(QWidget& dialog, const std::string& path)>& acceptable) {
        const QPointer<PathDialog> self = this;
        const int dpi = logicalDpiX();
        resize(size().expandedTo(QSize(MulDiv(640, dpi, 96), MulDiv(420, dpi, 96))));
        while (exec() == Accepted && !self.isNull()) {
            Resolved found{m_chosen, {}};
            if (m_chosen.empty()) found = resolve(selectedFiles().value(0));
            m_chosen.clear();
            if (!found.ambiguous.isEmpty()) {
                QMessageBox::warning(this, windowTitle(),
                                     tr("Several names look like this one, and it is not clear "
                                        "which is meant:\n%1\n\nPlease rename them.")
                                         .arg(found.ambiguous));
            } else if (acceptable(*this, found.path)) {
                return found.path;
            }
            if (self.isNull()) break;
        }
        return {};
    }

protected:
    void accept() override {
        const std::string odd = m_odd == nullptr ? std::string() : m_odd->selected();
        const bool folder = fileMode() == Directory;
        if (!odd.empty() && isDirectory(odd) == folder) {
            choose(odd);
        } else {
            if (const auto* name = findChild<QLineEdit*>(); name != nullptr && !isSave()) {
                const bool isThere = QFileInfo(directory(), name->text()).isFile();
                setDefaultSuffix(isThere ? QString() : m_extension);
            }
            QFileDialog::accept();
        }
    }

private:
    [[nodiscard]] bool isSave() const { return acceptMode() == AcceptSave; }
    // Sizes and dates show whole; the names have the rest.
    void fitColumns() {
        const auto* view = findChild<QTreeView*>();
        if (view == nullptr) return;
        view->header()->setStretchLastSection(false);
        view->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        view->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    void showOdd(const std::string& directory, bool all) {
        m_odd->enter(directory, all);
        m_odd->setVisible(m_odd->count() > 0);
        m_oddLabel->setVisible(m_odd->count() > 0);
    }
    void choose(const std::string& path) {
        m_chosen = path;
        // The library's file dialog would look for a name in its own field.
        QDialog::accept();  // NOLINT(bugprone-parent-virtual-call)
    }

    OddNames* m_odd = nullptr;
    QLabel* m_oddLabel = nullptr;
    QString m_extension;
    std::string m_chosen;
};

QDir g_lastDirectory;  // the present one at first

// ---- Records

// A pattern as the library's own form of a filter can hold it: blanks part the patterns there, and
// of all letters it knows only some. What it would not take fits any character.
QString heldPattern(QString pattern) {
    if (pattern == u"*.*") return QStringLiteral("*");
    for (QChar& c : pattern) {
        const bool held =
            c.unicode() < 128 &&
            (c.isLetterOrNumber() || QStringView(u"_.,*?+;#-[]@{}/!<>$%&=^~:|").contains(c));
        if (!held) c = u'?';
    }
    return pattern;
}

// "Language Files", "*.lng; *.ini" -> "Language Files (*.lng *.ini)". A description that ends in
// patterns of its own loses them: the dialog shows them anyway. A missing pattern is that of all
// files; an empty description ends the list.
QStringList nameFilters(TextView filter) {
    QStringList filters;
    const auto takePart = [&] {
        const std::size_t end = std::min(filter.find(u'\0'), filter.size());
        QString part = toQt(filter.substr(0, end));
        filter.remove_prefix(std::min(end + 1, filter.size()));
        return part;
    };
    while (!filter.empty() && filter.front() != u'\0') {
        QString description = takePart();
        QStringList patterns;
        for (const QString& pattern : takePart().split(u';', Qt::SkipEmptyParts)) {
            const QString trimmed = pattern.trimmed();
            if (!trimmed.isEmpty()) patterns << heldPattern(trimmed);
        }
        if (patterns.isEmpty()) patterns << QStringLiteral("*");
        const qsizetype open = description.lastIndexOf(u'(');
        if (open > 0 && description.endsWith(u')') && description.indexOf(u'*', open) > 0) {
            description = description.left(open).trimmed();
        }
        filters << description + QStringLiteral(" (") + patterns.join(u' ') + u')';
    }
    return filters;
}

Text trimmedName(TextView name) {
    name = name.substr(0, name.find(u'\0'));
    while (!name.empty() && name.front() == u' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == u' ') name.remove_suffix(1);
    return Text(name);
}

// The path and a NUL in front of what the buffer holds. False when that needs more than `limit`
// units.
bool putPath(Text& buffer, TextView path, std::size_t limit) {
    if (path.size() + 1 > limit) return false;
    if (buffer.size() < path.size() + 1) buffer.resize(path.size() + 1);
    std::ranges::copy(path, buffer.begin());
    buffer[path.size()] = u'\0';
    return true;
}

std::string extensionOf(const std::string& path) {
    const std::size_t dot = path.rfind('.'), slash = path.rfind('/');
    return dot == std::string::npos || (slash != std::string::npos && dot < slash)
               ? std::string()
               : path.substr(dot + 1);
}

bool canWrite(const std::string& path) {
    if (exists(path)) return ::access(path.c_str(), W_OK) == 0;
    return ::access(directoryOf(path).c_str(), W_OK) == 0;
}

std::uint32_t flagsAfter(const OPENFILENAMEW& record, const std::string& path) {
    std::uint32_t flags = record.Flags & ~(OFN_EXTENSIONDIFFERENT | OFN_NOREADONLYRETURN);
    const QString extension = shown(extensionOf(path));
    if (!record.lpstrDefExt.empty() &&
        extension.compare(toQt(record.lpstrDefExt), Qt::CaseInsensitive) != 0) {
        flags |= OFN_EXTENSIONDIFFERENT;
    }
    if (canWrite(path)) flags |= OFN_NOREADONLYRETURN;
    return flags;
}

bool askByScript(test::DialogScript& script, OPENFILENAMEW& record, bool save) {
    std::string filter;
    for (const QString& one : nameFilters(record.lpstrFilter)) {
        filter += (filter.empty() ? "" : "|") + one.toStdString();
    }
    const auto answer = script.next(save ? "save" : "open",
                                    "title=" + quotedText(record.lpstrTitle) + " filter=" + filter +
                                        " index=" + std::to_string(record.nFilterIndex) +
                                        " flags=" + hexText(record.Flags) +
                                        " dir=" + quotedText(record.lpstrInitialDir) +
                                        " name=" + quotedText(trimmedName(record.lpstrFile)) +
                                        " ext=" + quotedText(record.lpstrDefExt));
    if (answer.path.empty() || !putPath(record.lpstrFile, answer.path, record.nMaxFile))
        return false;
    record.Flags = flagsAfter(record, pathToSystem(answer.path));
    if (answer.filterIndex != 0) record.nFilterIndex = answer.filterIndex;
    return true;
}

// The directory to start in: the wished one when it is there, else the last one. An absolute path
// without a slash at its end.
std::string startDirectory(const std::string& wished) {
    if (!isDirectory(wished))
        return QFile::encodeName(g_lastDirectory.absolutePath()).toStdString();
    std::string path = std::filesystem::absolute(wished).string();
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path;
}

// Shows a message of the dialog. Always false, for acceptable.
bool tell(QWidget& dialog, const QString& text) {
    QMessageBox::warning(&dialog, dialog.windowTitle(), text);
    return false;
}

bool ask(OPENFILENAMEW& record, bool save) {
    if (test::DialogScript* script = dialogScript()) return askByScript(*script, record, save);

    const QStringList filters = nameFilters(record.lpstrFilter);
    DialogPointer<PathDialog> dialog(new PathDialog(widgetOf(record.hwndOwner), false));
    const bool mustExist = !save && (record.Flags & OFN_FILEMUSTEXIST) != 0;
    dialog->setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite, (record.Flags & OFN_OVERWRITEPROMPT) == 0);
    if (!record.lpstrTitle.empty()) dialog->setWindowTitle(toQt(record.lpstrTitle));
    dialog->setExtension(toQt(record.lpstrDefExt));
    if (!filters.isEmpty()) {
        dialog->setNameFilters(filters);
        const auto wanted = static_cast<qsizetype>(std::max(record.nFilterIndex, 1U)) - 1;
        dialog->selectNameFilter(filters[std::min(wanted, filters.size() - 1)]);
    }
    const std::string name = pathToSystem(trimmedName(record.lpstrFile));
    const std::size_t slash = name.rfind('/');
    const std::string around = slash == std::string::npos ? pathToSystem(record.lpstrInitialDir)
                                                          : name.substr(0, slash + 1);
    const std::string start = startDirectory(around);
    dialog->startIn(start);
    if (!name.empty()) dialog->startWith(start, name.substr(slash + 1));  // all of it without one

    const std::string path = dialog->run([&](QWidget& box, const std::string& chosen) {
        const std::string directory = directoryOf(chosen);
        if (mustExist && !exists(chosen)) {
            return tell(box, QFileDialog::tr("%1\nFile not found.").arg(shown(chosen)));
        }
        if (isDirectory(chosen)) {
            return tell(box, QFileDialog::tr("%1\nThis is a folder.").arg(shown(chosen)));
        }
        if ((record.Flags & OFN_PATHMUSTEXIST) != 0 && !isDirectory(directory)) {
            return tell(box, QFileDialog::tr("%1\nFolder not found.").arg(shown(directory)));
        }
        if (pathFromSystem(chosen).size() + 1 > record.nMaxFile) {
            return tell(box, QFileDialog::tr("%1\nThe path is too long.").arg(shown(chosen)));
        }
        // The library has asked already, unless it did not see the name.
        const bool ask = save && (record.Flags & OFN_OVERWRITEPROMPT) != 0;
        return !ask || isText(chosen) || !exists(chosen) ||
               QMessageBox::warning(
                   &box, box.windowTitle(),
                   QFileDialog::tr("%1 already exists.\nDo you want to replace it?")
                       .arg(shown(chosen)),
                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
    });
    if (path.empty() || !dialog) return false;

    if (!putPath(record.lpstrFile, pathFromSystem(path), record.nMaxFile)) return false;
    record.Flags = flagsAfter(record, path);
    const qsizetype used = filters.indexOf(dialog->selectedNameFilter());
    if (used >= 0) record.nFilterIndex = static_cast<std::uint32_t>(used) + 1;
    g_lastDirectory = dialog->directory();
    return true;
}

// ---- Folders

std::map<ITEMIDLIST, std::string>& items() {
    static std::map<ITEMIDLIST, std::string> all;
    return all;
}

ITEMIDLIST keepItem(std::string path) {
    static ITEMIDLIST last = 0;
    while (++last == 0 || items().contains(last)) {
    }
    items().emplace(last, std::move(path));
    return last;
}

// What BFFM_SETSELECTION... has asked for; the window that gets it stands for the dialog.
LRESULT browseProcedure(HWND hWnd, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    auto* selection = reinterpret_cast<Text*>(GetWindowLongW(hWnd, GWL_USERDATA));
    if (uMsg == BFFM_SETSELECTIONW && wParam == 1) {
        *selection = *reinterpret_cast<const Text*>(lParam);
        return 0;
    }
    if (uMsg == BFFM_SETSELECTIONA && wParam == 1) {
        const Bytes& bytes = *reinterpret_cast<const Bytes*>(lParam);
        *selection = bytesToText(bytes.data(), bytes.size(), GetACP());
        return 0;
    }
    return DefWindowProcW(hWnd, uMsg, wParam, lParam);
}

ITEMIDLIST browse(HWND owner, TextView title, BFFCALLBACK callback, LPARAM data) {
    Text selection;
    WindowOptions options;
    options.kind = WindowKind::Bare;
    options.procedure = browseProcedure;
    options.userData = reinterpret_cast<std::intptr_t>(&selection);
    if (callback != nullptr) {
        const struct Stand {
            HWND hWnd;
            ~Stand() { DestroyWindow(hWnd); }
        } stand{createWindow(options)};
        callback(stand.hWnd, BFFM_INITIALIZED, 0, data);
    }
    selection = trimmedName(selection);

    if (test::DialogScript* script = dialogScript()) {
        const auto answer = script->next("folder", "title=" + quotedText(title) +
                                                       " start=" + quotedText(selection));
        return answer.path.empty() ? 0 : keepItem(pathToSystem(answer.path));
    }
    DialogPointer<PathDialog> dialog(new PathDialog(widgetOf(owner), true));
    if (!title.empty()) dialog->setWindowTitle(toQt(title));
    dialog->startIn(startDirectory(pathToSystem(selection)));
    const std::string path = dialog->run([](QWidget& box, const std::string& chosen) {
        return isDirectory(chosen) ||
               tell(box, QFileDialog::tr("%1\nFolder not found.").arg(shown(chosen)));
    });
    return path.empty() ? 0 : keepItem(path);
}

}  // namespace

bool GetOpenFileNameW(OPENFILENAMEW& record) { return ask(record, false); }
bool GetSaveFileNameW(OPENFILENAMEW& record) { return ask(record, true); }

ITEMIDLIST SHBrowseForFolderW(const BROWSEINFOW& info) {
    return browse(info.hwndOwner, info.lpszTitle, info.lpfn, info.lParam);
}

ITEMIDLIST SHBrowseForFolderA(const BROWSEINFOA& info) {
    return browse(info.hwndOwner,
                  bytesToText(info.lpszTitle.data(), info.lpszTitle.size(), GetACP()), info.lpfn,
                  info.lParam);
}

bool SHGetPathFromIDListW(ITEMIDLIST item, Text& buffer) {
    const auto found = items().find(item);
    return found != items().end() && putPath(buffer, pathFromSystem(found->second), buffer.size());
}

bool SHGetPathFromIDListA(ITEMIDLIST item, Bytes& buffer) {
    const auto found = items().find(item);
    if (found == items().end()) return false;
    const Text path = pathFromSystem(found->second);
    const Bytes bytes = textToBytes(path, GetACP());
    // A path that the code page cannot hold would be another folder.
    if (bytesToText(bytes.data(), bytes.size(), GetACP()) != path) return false;
    if (bytes.size() + 1 > buffer.size()) return false;
    std::ranges::copy(bytes, buffer.begin());
    buffer[bytes.size()] = 0;
    return true;
}

void CoTaskMemFree(ITEMIDLIST item) { items().erase(item); }

namespace test {
int openFolderItems() { return static_cast<int>(items().size()); }
}  // namespace test

}  // namespace platform
