#ifndef KVSYNC_LIBRARYFILE_H
#define KVSYNC_LIBRARYFILE_H

#include <QtCore/QString>
#include <QtCore/QStringList>

class QIODevice;

namespace KvSyncCli {

enum class LibraryFormat {
    None, ///< neither ELF nor PE
    Elf,
    Pe,
};

/// What a shared library's headers say.
struct LibraryFile
{
    LibraryFormat format = LibraryFormat::None;
    int bits = 0; ///< 32 or 64
    bool bigEndian = false;
    quint16 machine = 0; ///< in the format's own numbers
    QStringList needed;  ///< as they stand in the file, in order
    QStringList rpath; ///< ELF: holds for what the needed libraries need, too; void with a RUNPATH
    QStringList runpath;     ///< ELF: holds for this library alone
    bool hasRunpath = false; ///< also if it is empty

    /// Whether this process could load it, going by format, width and machine.
    bool isForThisProcess() const;
    /// "ELF, 64 bits, machine 62"
    QString kindText() const;
};

/// Reads headers and the list of needed libraries, nothing else, and runs nothing. Of an ELF file
/// that is not 64 bits wide and little-endian, the header alone. Throws MalformedFile.
LibraryFile readLibraryFile(QIODevice &file);

/// The same for a path, as a loader looks at one that may not suit: what is no regular file, cannot
/// be opened or is damaged has no format.
LibraryFile libraryFileAt(const QString &path);

} // namespace KvSyncCli

#endif
