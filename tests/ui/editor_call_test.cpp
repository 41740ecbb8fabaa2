#include "app/call/editor_call.h"

#include <gtest/gtest.h>

#include <QTest>
#include <future>

#include "app/running_instance.h"
#include "platform/qt/file_names.h"
#include "support/patience.h"
#include "support/qt_test_application.h"
#include "support/test_files.h"

namespace sonavel {
namespace {

using Files = std::vector<std::string>;

TEST(EditorCall, TakesOptionsAndFiles) {
    const struct {
        std::vector<std::string> words;
        EditorCall::First first;
        EditorCall::Instance instance;
        Files files;
    } cases[] = {
        {{}, EditorCall::First::kNothing, EditorCall::Instance::kShared, {}},
        {{"a.wav", "--new", "b.wav"},
         EditorCall::First::kNew,
         EditorCall::Instance::kShared,
         {"a.wav", "b.wav"}},
        {{"--separate", "--record"},
         EditorCall::First::kRecord,
         EditorCall::Instance::kSeparate,
         {}},
        {{"--", "--new", "-h"},
         EditorCall::First::kNothing,
         EditorCall::Instance::kShared,
         {"--new", "-h"}},
        {{"-"}, EditorCall::First::kNothing, EditorCall::Instance::kShared, {"-"}},
    };
    for (const auto& c : cases) {
        std::string mistake;
        const auto call = ParseEditorCall(c.words, mistake);
        ASSERT_TRUE(call) << mistake;
        EXPECT_EQ(call->first, c.first);
        EXPECT_EQ(call->instance, c.instance);
        EXPECT_EQ(call->files, c.files);
        EXPECT_EQ(call->task, EditorCall::Task::kRun);
    }
}

TEST(EditorCall, NamesAWordThatIsNoOption) {
    std::string mistake;
    EXPECT_FALSE(ParseEditorCall({"a.wav", "--nwe"}, mistake));
    EXPECT_NE(mistake.find("--nwe"), std::string::npos);
}

TEST(EditorCall, AsksForATextAmongWordsOfTheToolkit) {
    EXPECT_EQ(TextTaskOf({"-platform", "offscreen", "--version"}), EditorCall::Task::kVersion);
    EXPECT_EQ(TextTaskOf({"-h"}), EditorCall::Task::kHelp);
    EXPECT_EQ(TextTaskOf({"--", "--help"}), EditorCall::Task::kRun);
    for (const EditorOption& option : EditorOptions())
        EXPECT_NE(EditorHelp().find(option.name), std::string::npos) << option.name;
}

TEST(InstanceRequest, TravelsWithNamesOfAnyBytes) {
    const InstanceRequest requests[] = {
        {EditorCall::First::kNothing, {}},
        {EditorCall::First::kRecord, {}},
        {EditorCall::First::kNew,
         {QStringLiteral("/a b/\n.wav"), FileText(std::filesystem::path("/\xb8\xb6.wav"))}},
    };
    for (const InstanceRequest& request : requests)
        EXPECT_EQ(RequestOfBytes(BytesOfRequest(request)), request);
}

TEST(InstanceRequest, IsRefusedWhenCutOrStrange) {
    const QByteArray whole = BytesOfRequest({EditorCall::First::kNothing, {QStringLiteral("/a")}});
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(RequestOfBytes(whole.first(size))) << size;
    for (QByteArray strange :
         {QByteArray("sonavel 1\0erase\0\0", 17), QByteArray("other\0open\0\0", 12),
          QByteArray("sonavel 1\0open\0relative\0\0", 26)})
        EXPECT_FALSE(RequestOfBytes(strange)) << strange.constData();
}

TEST(RunningInstance, TakesRequestsOfLaterStarts) {
    TestApplication();
    const TemporaryFolder folder;
    const QString path = QString::fromStdString((folder / "socket").string());
    // What a killed program leaves behind.
    WriteFileBytes(folder / "socket", {});
    RunningInstance first(path);
    ASSERT_EQ(first.Start({}), RunningInstance::Role::kFirst);
    std::vector<InstanceRequest> requests;
    QObject::connect(&first, &RunningInstance::Requested, &first,
                     [&](const InstanceRequest& request) { requests.push_back(request); });
    // A client that says nothing, and one that says nonsense, cost nothing.
    QLocalSocket silent;
    silent.connectToServer(path);
    silent.write("nonsense");
    const InstanceRequest request{EditorCall::First::kNothing, {QStringLiteral("/a.wav")}};
    auto later =
        std::async(std::launch::async, [&] { return RunningInstance(path).Start(request); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !requests.empty(); }, kPatienceMs));
    EXPECT_EQ(later.get(), RunningInstance::Role::kHandedOver);
    EXPECT_EQ(requests, std::vector{request});
}

TEST(RunningInstance, IsAloneWithoutAFolderForItsSocket) {
    TestApplication();
    EXPECT_EQ(RunningInstance(QString()).Start({}), RunningInstance::Role::kAlone);
    EXPECT_EQ(RunningInstance(QStringLiteral("/nowhere/socket")).Start({}),
              RunningInstance::Role::kAlone);
}

}  // namespace
}  // namespace sonavel
