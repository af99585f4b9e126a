#include "LibraryFile.h"

#include "BoundedReader.h"
#include "Formats.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace KvSyncCli {

namespace {

#if defined(Q_OS_WIN)
constexpr LibraryFormat ownFormat = LibraryFormat::Pe;
#else
constexpr LibraryFormat ownFormat = LibraryFormat::Elf;
#endif

struct Machine
{
    quint16 elf;
    quint16 pe;
};

#if defined(Q_PROCESSOR_X86_64)
constexpr Machine ownMachine = {62, 0x8664};
#elif defined(Q_PROCESSOR_X86_32)
constexpr Machine ownMachine = {3, 0x14c};
#elif defined(Q_PROCESSOR_ARM_64)
constexpr Machine ownMachine = {183, 0xaa64};
#else
#error "Name this processor as ELF and PE name it"
#endif

constexpr int ownBits = sizeof(void *) * 8;
constexpr bool ownBigEndian = Q_BYTE_ORDER == Q_BIG_ENDIAN;

} // namespace

bool LibraryFile::isForThisProcess() const
{
    const quint16 own = ownFormat == LibraryFormat::Elf ? ownMachine.elf : ownMachine.pe;
    return format == ownFormat && bits == ownBits && bigEndian == ownBigEndian && machine == own;
}

QString LibraryFile::kindText() const
{
    if (format == LibraryFormat::None)
        return QStringLiteral("neither ELF nor PE");
    return QStringLiteral("%1, %2 bits, machine %3")
        .arg(format == LibraryFormat::Elf ? QStringLiteral("ELF") : QStringLiteral("PE"))
        .arg(bits)
        .arg(machine);
}

LibraryFile readLibraryFile(QIODevice &file)
{
    const BoundedReader reader(file);
    const QByteArray magic = reader.bytes(0, static_cast<quint64>(qMin<qint64>(4, file.size())));
    if (magic == "\177ELF")
        return readElfFile(reader);
    if (magic.startsWith("MZ"))
        return readPeFile(reader);
    return {};
}

LibraryFile libraryFileAt(const QString &path)
{
    // Asked before it is opened: opening a pipe would wait for a writer.
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    try {
        return readLibraryFile(file);
    } catch (const MalformedFile &) {
        return {};
    }
}

} // namespace KvSyncCli
