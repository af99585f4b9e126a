#include "KvSyncTool/Exception.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using KvSyncTool::Exception;

const QString text = QStringLiteral("Gr\u00f6\u00dfe \u6f22");
const char textInUtf8[] = "Gr\xc3\xb6\xc3\x9f"
                          "e \xe6\xbc\xa2";

TEST(Exception, CarriesCodeAndTextUnchanged)
{
    const Exception exception(CameraFailed, text);
    EXPECT_EQ(exception.code(), CameraFailed);
    EXPECT_EQ(exception.message(), text);
}

TEST(Exception, CarriesACodeThatTheTableDoesNotKnow)
{
    EXPECT_EQ(Exception(static_cast<ErrorCode>(-7), text).code(), static_cast<ErrorCode>(-7));
}

TEST(Exception, TellsItsTextInUtf8)
{
    EXPECT_STREQ(Exception(CameraFailed, text).what(), textInUtf8);
}

TEST(Exception, TellsAnEmptyTextAsAnEmptyString)
{
    EXPECT_STREQ(Exception(InvalidParameter, QString()).what(), "");
}

TEST(Exception, RaiseThrowsItsOwnTypeWithTheSameContent)
{
    const std::unique_ptr<QException> exception(new Exception(CameraFailed, text));
    try {
        exception->raise();
        FAIL() << "nothing thrown";
    } catch (const Exception &raised) {
        EXPECT_NE(&raised, exception.get());
        EXPECT_EQ(raised.code(), CameraFailed);
        EXPECT_EQ(raised.message(), text);
    }
}

TEST(Exception, CloneOutlivesItsOriginal)
{
    auto original = std::make_unique<Exception>(CameraFailed, text);
    const std::unique_ptr<QException> clone(static_cast<QException *>(original.get())->clone());
    original.reset();
    EXPECT_STREQ(clone->what(), textInUtf8);
    ASSERT_NE(dynamic_cast<Exception *>(clone.get()), nullptr);
    EXPECT_EQ(dynamic_cast<Exception *>(clone.get())->code(), CameraFailed);
}

TEST(Exception, CopyOutlivesItsOriginal)
{
    std::optional<Exception> original(std::in_place, CameraFailed, text);
    const Exception copy(*original);
    original.reset();
    EXPECT_EQ(copy.code(), CameraFailed);
    EXPECT_EQ(copy.message(), text);
    EXPECT_STREQ(copy.what(), textInUtf8);
}

TEST(Exception, AssignmentReplacesCodeAndText)
{
    Exception exception(CameraFailed, "old");
    exception = Exception(ProjectorFailed, text);
    EXPECT_EQ(exception.code(), ProjectorFailed);
    EXPECT_EQ(exception.message(), text);
    EXPECT_STREQ(exception.what(), textInUtf8);
}

template <typename Base>
QByteArray textCaughtAs()
{
    try {
        throw Exception(CameraFailed, text);
    } catch (const Base &base) {
        return base.what();
    }
}

TEST(Exception, MayBeCaughtAsQException)
{
    EXPECT_EQ(textCaughtAs<QException>(), textInUtf8);
}

TEST(Exception, MayBeCaughtAsStandardException)
{
    EXPECT_EQ(textCaughtAs<std::exception>(), textInUtf8);
}

} // namespace
