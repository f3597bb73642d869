// Files on disk and in memory for everything that saves or loads.
//
// A regular file is written through a temporary file beside it, which takes its place when the
// writer commits: whatever happens, there is the old file or the new one, whole. What is no regular
// file (a device, a pipe) is written directly, at the commit. An input that is no regular file is
// read to its end when it is opened, so that its length is known. Neither a broken pipe nor a limit
// on file sizes ends the process: both are failing writes.
#pragma once

#include <functional>
#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/memory_file.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// How an existing regular file is saved over.
enum class SaveMode {
    /// Through a temporary file in the same folder and a rename. The file keeps its owner, group
    /// and permissions; where they cannot be kept, the folder cannot be written or the system does
    /// not let the file be replaced (it is a mount of its own), saving fails and the old file stays
    /// as it was. Other hard links go on naming the old content, and extended attributes and access
    /// lists are not carried over. Temporary files (".varnel-" and 16 hexadecimal digits) that a
    /// process left behind when it was killed are removed by the next save into the folder.
    Replace,
    /// Into the file itself, for hosts that have to keep its hard links or attributes or may not
    /// write its folder. The new bytes are complete in memory and the disk has room for them before
    /// the first is written, and the old ones are put back when writing fails; but a process that
    /// is killed meanwhile leaves a torn file.
    Direct
};

/// The mode of all files that are opened for saving from now on in this process; Replace at first.
VARNEL_API void SetSaveMode(SaveMode mode);
VARNEL_API SaveMode GetSaveMode();

/// 1, the default: what was saved is on the disk, and so is its folder's entry, before the commit
/// returns. 0: the system writes it when it likes; a power cut can then take it. For the process.
VARNEL_API void SetSaveSync(int on);
VARNEL_API int GetSaveSync();

/// Opens an existing file for reading; null when that is not possible (missing, a folder, no
/// permission, a device or pipe that gives more than 256 MiB), and then `why`, if given, is the
/// name with the system's reason.
VARNEL_API std::unique_ptr<File> OpenInputFile(const CString& name, CString* why = nullptr);

/// The same for names that somebody else chose: regular files alone, without waiting for anything.
VARNEL_API std::unique_ptr<File> OpenRegularFile(const CString& name, CString* why = nullptr);

/// Creates a file, or prepares to replace the one that is there, see SaveMode; null when that is
/// not possible, and then `why`, if given, is the name with the system's reason. Nothing is final
/// before File::Commit. Symbolic links are followed.
VARNEL_API std::unique_ptr<File> OpenOutputFile(const CString& name, CString* why = nullptr);

/// Says which file holds the picture that a chart file names: its answer is opened, "" is refused.
/// `chartFile` is empty for a chart that comes from no named file.
using PictureFileHook = std::function<CString(const CString& picture, const CString& chartFile)>;

/// Installs a hook for the process and returns the one before it. An empty hook brings back the
/// default, PictureBeside.
VARNEL_API PictureFileHook SetPictureFileHook(PictureFileHook hook);

/// The default: an absolute name as it is, a relative one in the chart file's folder or below (".."
/// in it leads nowhere), or in the current folder when the chart file is unknown.
VARNEL_API CString PictureBeside(const CString& picture, const CString& chartFile);

/// Opens the picture that a chart file names, where the hook says, as OpenRegularFile does.
VARNEL_API std::unique_ptr<File> OpenPictureFile(const CString& picture, const CString& chartFile,
                                                 CString* why = nullptr);

}  // namespace varnel
