// What the blocks of a host's author call beside this project's own headers.
#ifndef KVSYNC_DOCS_HOST_H
#define KVSYNC_DOCS_HOST_H

#include <QtCore/QByteArray>

#include <cstddef>
#include <vector>

struct Host
{
    void keepCopy(std::size_t, const unsigned char *, int, int) {}
};

inline void use(int, int, const QByteArray &)
{
}

void receiveFrame(const void *const &context, std::vector<unsigned char *> &images,
                  const int &dimension1, const int &dimension2, std::vector<int> &perImage);

#endif
