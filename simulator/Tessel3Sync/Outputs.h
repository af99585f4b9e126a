// The out arguments of a call, by name: so that an answer can be scripted for any of them.
#ifndef TESSEL3SYNCSIMULATOR_OUTPUTS_H
#define TESSEL3SYNCSIMULATOR_OUTPUTS_H

#include <Tessel3SyncSimulator/Control.h>

#include <list>
#include <memory>
#include <string>
#include <vector>

namespace Tessel3SyncSimulator {

/// The image buffers of a snapshot, which stay valid until the next one.
struct Snapshot
{
    std::vector<std::vector<unsigned char>> images;
};

/// Where a call writes the images of a snapshot: the caller's vector, over buffers of ours.
struct ImageOutput
{
    std::vector<unsigned char *> &pointers;
    Snapshot &storage;
};

/// The caller's buffer of 512 bytes for user information.
struct BufferOutput
{
    char *&buffer;
};

/// Another buffer put in the place of the caller's.
struct ReplacementOutput
{
    char *&buffer;
};

// Each writes a value of the kind that fits the target; std::get throws for another kind, which
// scripting has ruled out.
void assign(bool &target, const Value &value);
void assign(int &target, const Value &value);
void assign(double &target, const Value &value);
void assign(std::string &target, const Value &value);
void assign(char *&target, const Value &value);
void assign(void *&target, const Value &value);
void assign(std::vector<bool> &target, const Value &value);
void assign(std::vector<int> &target, const Value &value);
void assign(std::vector<char *> &target, const Value &value);
void assign(ImageOutput &target, const Value &value);
void assign(BufferOutput &target, const Value &value);
void assign(ReplacementOutput &target, const Value &value);

// Each turns what the call wrote into its complement.
void corrupt(bool &target);
void corrupt(int &target);
void corrupt(double &target);
void corrupt(std::string &target);
void corrupt(char *&target);
void corrupt(void *&target);
void corrupt(std::vector<bool> &target);
void corrupt(std::vector<int> &target);
void corrupt(std::vector<char *> &target);
void corrupt(ImageOutput &target);
void corrupt(BufferOutput &target);
void corrupt(ReplacementOutput &target);

/// The complement of every pixel.
void corrupt(unsigned char *pixels, std::size_t size);

/// Writes a text with its terminating zero into a buffer for user information, cut to fit.
void writeToBuffer(char *buffer, const std::string &text);

} // namespace Tessel3SyncSimulator

#endif
