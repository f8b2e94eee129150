// Writes what the benchmarks read to files, for peers that are other programs:
//   write_benchmark_inputs FOLDER

#include "DiffInputs.h"
#include "StreamInput.h"

#include <QDir>
#include <QFile>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;
using vantrel::bench::diffInput;
using vantrel::bench::DiffShape;

namespace {

bool write(const QDir &folder, const QString &name, const QByteArray &bytes)
{
    QFile file(folder.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_benchmark_inputs FOLDER\n");
        return 2;
    }
    const QDir folder(QFile::decodeName(argv[1]));
    const bool isWritten =
        write(folder, u"manyHunks1MB.diff"_s, diffInput(DiffShape::manyHunks, 1)) &&
        write(folder, u"manyHunks20MB.diff"_s, diffInput(DiffShape::manyHunks, 20)) &&
        write(folder, u"oneHunk20MB.diff"_s, diffInput(DiffShape::oneHunk, 20)) &&
        write(folder, u"eventStream.sse"_s, vantrel::bench::eventStream());
    if (!isWritten) {
        std::fprintf(stderr, "cannot write to %s\n", argv[1]);
    }
    return isWritten ? 0 : 1;
}
