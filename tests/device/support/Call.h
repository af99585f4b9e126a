#ifndef KVSYNC_TESTS_CALL_H
#define KVSYNC_TESTS_CALL_H

#include "KvSyncDevice/DeviceHandle.h"

#include <QtCore/QString>
#include <QtCore/QVersionNumber>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace KvSyncTest {

/// One call as it was made or received: what is passed by value as text, what is passed by
/// reference as its address. Equal calls thus got the very same objects.
struct Call
{
    std::string operation;
    std::vector<std::string> arguments;

    bool operator==(const Call &other) const
    {
        return operation == other.operation && arguments == other.arguments;
    }
};

inline void PrintTo(const Call &call, std::ostream *stream)
{
    *stream << call.operation << ::testing::PrintToString(call.arguments);
}

template <typename Value>
std::string described(const Value &value)
{
    std::ostringstream text;
    if constexpr (std::is_pointer_v<Value>)
        text << '@' << static_cast<const void *>(value);
    else if constexpr (std::is_same_v<Value, QString>)
        text << value.toStdString();
    else if constexpr (std::is_same_v<Value, QVersionNumber>)
        text << value.toString().toStdString();
    else if constexpr (std::is_enum_v<Value>)
        text << static_cast<int>(value);
    else
        text << +value;
    return text.str();
}

/// The receiving side: pass values as they are, and the address of what came by reference.
template <typename... Values>
Call received(const char *operation, const Values &...values)
{
    return {operation, {described(values)...}};
}

/// Two values for every parameter, so that none can be a constant on its way, or lose bits.
enum class Sample { Plain, Extreme };

/// An argument for a parameter of one type. The handle is given; everything else gets a value that
/// differs from its neighbours and from what a default would be.
template <typename Parameter>
struct Argument
{
    using Value = std::remove_const_t<std::remove_reference_t<Parameter>>;

    Argument(int position, DeviceHandle handle, Sample sample)
        : value(make(position, handle, sample))
        , before(value)
    {
    }

    static Value make([[maybe_unused]] int position, [[maybe_unused]] DeviceHandle handle,
                      [[maybe_unused]] Sample sample)
    {
        if constexpr (std::is_same_v<Value, DeviceHandle>)
            return handle;
        else if constexpr (std::is_same_v<Value, bool>)
            return sample == Sample::Plain;
        else if constexpr (std::is_same_v<Value, void *>)
            return reinterpret_cast<void *>(static_cast<quintptr>(0x1000 + position));
        else if constexpr (std::is_arithmetic_v<Value>)
            return sample == Sample::Plain ? static_cast<Value>(40 + position) : extreme(position);
        else if constexpr (std::is_enum_v<Value>)
            return static_cast<Value>(sample == Sample::Plain ? 40 + position : -40 - position);
        else if constexpr (std::is_same_v<Value, QString>)
            return QString("text %1").arg(position);
        else if constexpr (std::is_same_v<Value, QVersionNumber>)
            return QVersionNumber(2, position);
        else
            return Value();
    }

    /// The lowest of a signed type, the highest of another, neighbours apart.
    static Value extreme(int position)
    {
        if constexpr (std::is_signed_v<Value>)
            return static_cast<Value>(std::numeric_limits<Value>::lowest() + position);
        else
            return static_cast<Value>(std::numeric_limits<Value>::max() - position);
    }

    std::string text() const
    {
        if constexpr (std::is_reference_v<Parameter>)
            return described(&value);
        else
            return described(value);
    }

    /// Whether an output argument still is as the caller made it.
    bool isUntouched() const
    {
        if constexpr (std::is_lvalue_reference_v<Parameter> &&
                      !std::is_const_v<std::remove_reference_t<Parameter>>)
            return value == before;
        else
            return true;
    }

    Value value;
    const Value before;
};

template <typename Result>
struct Outcome
{
    Result result;
    Call call; ///< as it was made
    bool argumentsUntouched;
};

template <typename Result, typename Target, typename... Parameters, std::size_t... positions>
Outcome<Result> invokeAt(Target &target, const char *name,
                         Result (Target::*operation)(Parameters...),
                         [[maybe_unused]] DeviceHandle handle, [[maybe_unused]] Sample sample,
                         std::index_sequence<positions...>)
{
    std::tuple<Argument<Parameters>...> arguments{
        Argument<Parameters>(static_cast<int>(positions), handle, sample)...};
    Result result =
        (target.*operation)(static_cast<Parameters>(std::get<positions>(arguments).value)...);
    return {std::move(result),
            {name, {std::get<positions>(arguments).text()...}},
            (std::get<positions>(arguments).isUntouched() && ...)};
}

/// Calls a member with arguments made for its parameters, and tells what was passed.
template <typename Result, typename Target, typename... Parameters>
Outcome<Result> invoke(Target &target, const char *name, Result (Target::*operation)(Parameters...),
                       DeviceHandle handle, Sample sample = Sample::Plain)
{
    return invokeAt(target, name, operation, handle, sample,
                    std::index_sequence_for<Parameters...>());
}

} // namespace KvSyncTest

#endif
