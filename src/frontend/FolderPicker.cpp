#include "frontend/FolderPicker.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace skl::frontend {

namespace {

constexpr int kPathRole = Qt::UserRole;

QString PathOf(const QTreeWidgetItem* item) {
    return item->data(0, kPathRole).toString();
}

QString ChildPath(const QString& folder, const QString& name) {
    return QDir::cleanPath(folder + QLatin1Char('/') + name);
}

bool Holds(const QString& root, const QString& folder) {
    if (root == QLatin1String("/")) return folder.startsWith(QLatin1Char('/'));
    return folder == root || folder.startsWith(root + QLatin1Char('/'));
}

QTreeWidgetItem* NewFolderItem(const QString& text, const QString& path) {
    auto* item = new QTreeWidgetItem(QStringList{text});
    item->setData(0, kPathRole, path);
    item->setToolTip(0, path);
    item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

// Lists the folder's sub-folders under the item: those that are not listed yet
// are added in their sorted place, so that folders made since the last look
// show up. Nothing is taken away.
void Populate(QTreeWidgetItem* item) {
    const QString folder = PathOf(item);
    const QStringList names = ListSubFolders(folder);
    int row = 0;
    for (const QString& name : names) {
        const QString path = ChildPath(folder, name);
        while (row < item->childCount() &&
               item->child(row)->text(0).compare(name, Qt::CaseInsensitive) < 0) {
            ++row;
        }
        if (row < item->childCount() && PathOf(item->child(row)) == path) {
            ++row;
            continue;
        }
        item->insertChild(row++, NewFolderItem(name, path));
    }
    if (item->childCount() == 0)
        item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

}  // namespace

QStringList ListSubFolders(const QString& nativeFolder) {
    QDir dir(nativeFolder);
    return dir.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDir::Name | QDir::IgnoreCase);
}

FolderPicker::FolderPicker(const QString& driveName, const QString& folderName, QWidget* parent)
    : QWidget(parent), driveList_(new QComboBox(this)), folderList_(new QTreeWidget(this)) {
    driveList_->setObjectName(driveName);
    folderList_->setObjectName(folderName);
    folderList_->setHeaderHidden(true);
    folderList_->setColumnCount(1);
    folderList_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    folderList_->header()->setStretchLastSection(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(driveList_);
    layout->addWidget(folderList_, 1);

    connect(driveList_, &QComboBox::activated, this, &FolderPicker::OnDriveActivated);
    connect(folderList_, &QTreeWidget::itemExpanded, this,
            [](QTreeWidgetItem* item) { Populate(item); });
    connect(folderList_, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* current, QTreeWidgetItem*) { OnCurrentItemChanged(current); });
}

void FolderPicker::AddDrives(const std::vector<PickerDrive>& drives) {
    for (const PickerDrive& drive : drives) {
        PickerDrive entry{drive.Letter, QDir::cleanPath(drive.Root)};
        if (entry.Root.isEmpty()) continue;
        size_t at = 0;
        bool listed = false;
        for (; at < drives_.size(); ++at) {
            const PickerDrive& other = drives_[at];
            if (other.Letter == entry.Letter && other.Root == entry.Root) listed = true;
            if (listed || other.Letter > entry.Letter ||
                (other.Letter == entry.Letter && other.Root > entry.Root)) {
                break;
            }
        }
        if (listed) continue;
        const QChar letter = QChar::fromLatin1(entry.Letter);
        QTreeWidgetItem* root = NewFolderItem(letter.toUpper() + QStringLiteral(":\\"), entry.Root);
        root->setHidden(true);
        {
            QSignalBlocker blockList(driveList_);
            QSignalBlocker blockTree(folderList_);
            driveList_->insertItem(static_cast<int>(at),
                                   QStringLiteral("%1:  [%2]").arg(letter.toLower(), entry.Root));
            folderList_->insertTopLevelItem(static_cast<int>(at), root);
            if (drive_ >= 0)
                driveList_->setCurrentIndex(drive_ >= static_cast<int>(at) ? drive_ + 1 : drive_);
        }
        drives_.insert(drives_.begin() + static_cast<std::ptrdiff_t>(at), entry);
        roots_.insert(roots_.begin() + static_cast<std::ptrdiff_t>(at), root);
        if (drive_ >= static_cast<int>(at)) ++drive_;
    }
}

char FolderPicker::DriveLetter() const {
    return drive_ >= 0 ? drives_[static_cast<size_t>(drive_)].Letter : '\0';
}

int FolderPicker::DriveHolding(const QString& nativeFolder, char letter) const {
    const char wanted = QChar::fromLatin1(letter).toUpper().toLatin1();
    int best = -1;
    bool bestHasLetter = false;
    for (size_t i = 0; i < drives_.size(); ++i) {
        const QString& root = drives_[i].Root;
        if (!Holds(root, nativeFolder)) continue;
        const bool hasLetter = wanted != '\0' && drives_[i].Letter == wanted;
        const bool longer =
            best >= 0 && root.size() > drives_[static_cast<size_t>(best)].Root.size();
        if (best < 0 || (hasLetter && !bestHasLetter) || (hasLetter == bestHasLetter && longer)) {
            best = static_cast<int>(i);
            bestHasLetter = hasLetter;
        }
    }
    return best;
}

void FolderPicker::ShowDrive(int index) {
    QSignalBlocker blockList(driveList_);
    QSignalBlocker blockTree(folderList_);
    for (size_t i = 0; i < roots_.size(); ++i) roots_[i]->setHidden(static_cast<int>(i) != index);
    QTreeWidgetItem* root = roots_[static_cast<size_t>(index)];
    Populate(root);
    root->setExpanded(true);
    driveList_->setCurrentIndex(index);
    drive_ = index;
}

QTreeWidgetItem* FolderPicker::Reveal(const QString& nativeFolder) {
    QTreeWidgetItem* item = roots_[static_cast<size_t>(drive_)];
    const QString root = PathOf(item);
    const QString relative = QDir(root).relativeFilePath(nativeFolder);
    QSignalBlocker blockTree(folderList_);
    const QStringList names = relative == QLatin1String(".")
                                  ? QStringList()
                                  : relative.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& name : names) {
        Populate(item);
        item->setExpanded(true);
        const QString path = ChildPath(PathOf(item), name);
        QTreeWidgetItem* next = nullptr;
        for (int i = 0; i < item->childCount() && next == nullptr; ++i) {
            if (PathOf(item->child(i)) == path) next = item->child(i);
        }
        if (next == nullptr) return nullptr;
        item = next;
    }
    // The chosen folder shows its sub-folders.
    Populate(item);
    item->setExpanded(true);
    return item;
}

bool FolderPicker::SetFolder(const QString& nativeFolder, bool quietly, char letter) {
    const QString folder = QDir::cleanPath(nativeFolder);
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) return false;
    const int index = DriveHolding(folder, letter);
    if (index < 0) return false;
    if (index != drive_) ShowDrive(index);
    // Only the way to the new folder stays open.
    {
        QSignalBlocker blockTree(folderList_);
        folderList_->collapseAll();
        roots_[static_cast<size_t>(index)]->setExpanded(true);
    }
    QTreeWidgetItem* item = Reveal(folder);
    if (item == nullptr) return false;
    {
        QSignalBlocker blockTree(folderList_);
        folderList_->setCurrentItem(item);
    }
    folderList_->scrollToItem(item, QAbstractItemView::PositionAtCenter);
    const bool changed = folder != folder_;
    folder_ = folder;
    if (changed && !quietly) emit FolderChanged();
    return true;
}

void FolderPicker::OnDriveActivated(int index) {
    if (index < 0 || index >= static_cast<int>(drives_.size())) return;
    const QString root = drives_[static_cast<size_t>(index)].Root;
    // A drive that is not ready leaves the folder where it was.
    if (!QFileInfo(root).isDir()) {
        QSignalBlocker blockList(driveList_);
        driveList_->setCurrentIndex(drive_);
        return;
    }
    ShowDrive(index);
    SetFolder(root, false, drives_[static_cast<size_t>(index)].Letter);
}

void FolderPicker::OnCurrentItemChanged(QTreeWidgetItem* current) {
    if (current == nullptr) return;
    const QString folder = PathOf(current);
    if (folder == folder_) return;
    folder_ = folder;
    emit FolderChanged();
}

}  // namespace skl::frontend
