#pragma once

/// The registration of a file type: which keys are written, in which order. The table of them is in
/// docs/formats/associations.md.

#include <string>

#include "shell/KeyStore.h"

namespace pictavo {

/// The key of the type that both of the program's extensions belong to.
inline constexpr const char* kPictureFileClass = "gpffile";

/// Fill the fields in, then create or delete. A write that fails does not keep the later ones from being
/// tried; Written tells of it. Nothing is sure to hold before the store's Commit, which is the caller's.
class CFileAssociation {
  public:
    std::string strExt;          ///< with its dot
    std::string strAppID;        ///< key of the type; several extensions may share one
    std::string strOpenCommand;  ///< for the verb "open"
    std::string strFileType;     ///< description that the desktop shows; may be empty
    std::string strIcon;         ///< empty, the number of an icon in the program, or "FILE,NUMBER"
    std::string strNewFileType;  ///< "Command", "NullFile" or "FileName"; any other makes no New entry
    std::string strNewFileCommand;
    std::string strExePath;

    /// `program` is the path of the running program, which a mere number in `strIcon` counts in. The store
    /// outlives the object.
    CFileAssociation(KeyStore& store, std::string program);

    /// 0, or 1 when `strExt` or `strAppID` is empty; then nothing is written. Empties `strNewFileCommand`
    /// when `strNewFileType` is "NullFile".
    int CreateAssociation();

    /// Sets the command of the type's verb `strText`.
    void CreateContextMenuItem(const std::string& strText, const std::string& strCommand);

    /// Deletes the keys of extension and type, one deletion each. Nothing when either name is empty. The
    /// counterpart of CreateAssociation, though no command uses it.
    void DeleteAssociation();

    /// The first failure of a write since the object was made.
    const Status& Written() const { return written_; }

  private:
    void CreateKeyWithValue(const std::string& key, const std::string& name, const std::string& value);
    void CreateNewEntry();
    void CreateType();
    void CreateIcon();
    std::string IconLocation() const;
    void Note(const Status& status);

    KeyStore& store_;
    std::string program_;
    Status written_;
};

/// Registers one extension for `program` (a path) as a picture file that can be created empty from the
/// desktop's New menu. Kept: the type is first written with "open" as its command, which the program's own
/// command then replaces, and the program's path stands without quotation marks in it, blanks or not. Fails
/// with the first failure of a write, when all have been tried.
Status RegisterPictureFileType(KeyStore& store, const std::string& program, const std::string& extension,
                               const std::string& description);

}  // namespace pictavo
