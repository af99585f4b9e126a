#ifndef TESSEL3SYNCSIMULATOR_CALLRECORDER_H
#define TESSEL3SYNCSIMULATOR_CALLRECORDER_H

#include <Tessel3SyncSimulator/Control.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace Tessel3SyncSimulator {

/// Counts the calls of every function and keeps the newest of them.
class CallRecorder
{
public:
    /// Returns the call's number among those of its function, from 1.
    int record(const Call &call);

    std::vector<Call> calls() const;
    void clearCalls();
    int count(const std::string &function) const;

private:
    std::deque<Call> newest;
    std::map<std::string, int> counts;
};

// Arguments as Call::arguments shows them.
std::string argumentText(bool value);
std::string argumentText(int value);
std::string argumentText(double value);
std::string argumentText(const char *text);
std::string argumentText(const void *pointer);
std::string argumentText(const std::string &bytes);
std::string argumentText(const std::vector<bool> &values);
std::string argumentText(const std::vector<int> &values);
std::string argumentText(const std::vector<char *> &texts);

} // namespace Tessel3SyncSimulator

#endif
