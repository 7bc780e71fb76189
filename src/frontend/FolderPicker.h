#pragma once

#include <QString>
#include <QWidget>
#include <vector>

class QComboBox;
class QTreeWidget;
class QTreeWidgetItem;

namespace skl::frontend {

// One entry of the drive list: a drive letter and the native folder it stands for.
struct PickerDrive {
    char Letter = 'Z';
    QString Root;
};

// A folder picker: a drive list above a folder tree of the chosen drive. The tree
// lists every sub-folder, hidden ones too, but no system entries. The picker
// deals in native folders; the window turns them into Windows paths.
class FolderPicker : public QWidget {
    Q_OBJECT

  public:
    // `driveName` and `folderName` name the two lists (drvFS and dirFS, ...).
    FolderPicker(const QString& driveName, const QString& folderName, QWidget* parent = nullptr);

    // Adds the drives that are not listed yet. Entries are never taken away, so
    // the drive that shows the current folder stays.
    void AddDrives(const std::vector<PickerDrive>& drives);

    // Moves to a native folder, shown on the drive `letter` when that drive holds
    // it, else on the listed drive whose folder is the longest one that holds it.
    // Fires FolderChanged when the folder differs from the present one, unless
    // `quietly`. False (and nothing moves) when the folder does not exist or lies
    // on no listed drive.
    bool SetFolder(const QString& nativeFolder, bool quietly = false, char letter = '\0');

    QString Folder() const { return folder_; }
    char DriveLetter() const;
    QComboBox* DriveList() const { return driveList_; }
    QTreeWidget* FolderList() const { return folderList_; }

  signals:
    void FolderChanged();

  private:
    void OnDriveActivated(int index);
    void OnCurrentItemChanged(QTreeWidgetItem* current);
    int DriveHolding(const QString& nativeFolder, char letter) const;
    void ShowDrive(int index);
    QTreeWidgetItem* Reveal(const QString& nativeFolder);

    std::vector<PickerDrive> drives_;
    // One top-level item per listed drive; only the chosen one is visible. Items
    // are only ever added, so that a change notification never outlives its item.
    std::vector<QTreeWidgetItem*> roots_;
    int drive_ = -1;
    QString folder_;
    QComboBox* driveList_;
    QTreeWidget* folderList_;
};

// The sub-folders of a native folder, hidden ones included and system entries
// (devices, pipes, sockets, broken links) left out, sorted without regard to case.
QStringList ListSubFolders(const QString& nativeFolder);

}  // namespace skl::frontend
