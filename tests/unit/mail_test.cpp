// Mail and the uploader: which captures go, what the marks and ticks say afterwards, which
// JPEG files stay, and the uploader's command line.
#include "app_fixture.h"
#include "test_util.h"

namespace {

class MailTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        StartMarked();
        for (int k = 0; k < 3; ++k) Zone(40, 30, gdi::Rgb(k * 60, 10, 10));
    }
    void Run(void (*routine)(mv::App&)) {
        ui::Dispatch(be, [&] { routine(*app); });
    }
    headless::Mailer& M() { return be.mailer; }
    int Tick(int n) { return list->Chkmail[n].Value(); }
    bool Mark(int n) { return list->pictmail[n].Visible(); }
    // The attachments of the last message, by the capture number that ends their name.
    std::vector<int> Numbers() {
        std::vector<int> v;
        for (const auto& a : M().sent.back().message.attachments) {
            const size_t tiret = a.rfind(L'-');
            v.push_back(std::stoi(a.substr(tiret + 1)));
        }
        return v;
    }
};

TEST_F(MailTest, TickedCapturesGoOnceAndAllSendsThemAgain) {
    list->Chkmail[1].SetValue(1);
    list->Chkmail[3].SetValue(1);
    Run(mv::mnujoindrecoch_Click);
    ASSERT_EQ(M().sent.size(), 1u);
    EXPECT_EQ(Numbers(), (std::vector<int>{1, 3}));
    EXPECT_EQ(M().sent[0].attachmentsExisted, (std::vector<bool>{true, true}));
    EXPECT_EQ(be.codec.saves.back().quality, app->params.QualiteJpeg);
    EXPECT_EQ(Tick(1), 2);
    EXPECT_EQ(Tick(2), 0);
    EXPECT_TRUE(Mark(1) && Mark(3) && !Mark(2));
    // The client may read them after the call: they stay for the run.
    for (const auto& a : M().sent[0].message.attachments) EXPECT_TRUE(rt::FileExists(a));

    // Sent boxes are not sent again: with no tick the message has no attachment.
    Run(mv::mnujoindrecoch_Click);
    ASSERT_EQ(M().sent.size(), 2u);
    EXPECT_TRUE(M().sent[1].message.attachments.empty());

    // "All" ticks every capture again, sent or not.
    Run(mv::mnujoindretout_Click);
    EXPECT_EQ(Numbers(), (std::vector<int>{1, 2, 3}));
    for (int n = 1; n <= 3; ++n) EXPECT_EQ(Tick(n), 2);
}

TEST_F(MailTest, AFailedSendClearsTheTicksAndTakesItsFiles) {
    // A cancel by the user (32001) and a failure alike; a capture mailed before keeps its
    // state.
    const std::pair<int, std::wstring> cas[] = {
        {32001, Entry(139)}, {32002, Entry(162) + L"32002 Unspecified failure has occurred"}};
    for (const auto& [code, texte] : cas) {
        be.boxes.clear();
        list->Chkmail[1].SetValue(1);
        list->Chkmail[3].SetValue(2);
        list->pictmail[3].SetVisible(true);
        M().sendResult = code;
        Run(mv::mnujoindrecoch_Click);
        EXPECT_EQ(BoxesWith(texte), 1);
        EXPECT_EQ(Tick(1), 0);
        EXPECT_EQ(Tick(3), 2);
        EXPECT_TRUE(!Mark(1) && Mark(3));
        for (const auto& a : M().sent.back().message.attachments) EXPECT_FALSE(rt::FileExists(a));
    }
}

TEST_F(MailTest, AnErrorBeforeTheSendShowsOneBoxAndKeepsTheTicks) {
    // No mail client: the sign-on's number with a text that says so; nothing is sent.
    list->Chkmail[2].SetValue(1);
    M().signOnResult = platform::Mailer::kNoClient;
    Run(mv::mnujoindrecoch_Click);
    EXPECT_EQ(BoxesWith(L"32026 " + Entry(278)), 1);
    EXPECT_TRUE(M().sent.empty());
    EXPECT_EQ(Tick(2), 1);

    // The quiet number goes on to the send.
    be.boxes.clear();
    M().signOnResult = 48389;
    Run(mv::mnujoindrecoch_Click);
    EXPECT_TRUE(be.boxes.empty());
    EXPECT_EQ(M().sent.size(), 1u);

    // A ticked capture whose file is gone: the conversion's own box, no send, the JPEGs
    // already made removed, the marks of this mail hidden and the ticks kept.
    M().signOnResult = 0;
    list->Chkmail[1].SetValue(1);
    list->Chkmail[3].SetValue(1);
    rt::Kill(TempFile(3));
    Run(mv::mnujoindrecoch_Click);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_EQ(be.boxes[0].prompt.find(Entry(190)), 0u);
    EXPECT_EQ(M().sent.size(), 1u);
    EXPECT_EQ(Tick(1), 1);
    EXPECT_EQ(Tick(3), 1);
    EXPECT_FALSE(Mark(1) || Mark(3));
    EXPECT_TRUE(Mark(2)); // mailed by the send above
    for (const auto& f : TempFolderFiles()) EXPECT_NE(f.substr(f.size() - 6), L"-1.jpg");
}

TEST_F(MailTest, FiftyCapturesAtMostAndHighNumbersWork) {
    for (int k = 3; k < 73; ++k) Zone(4, 4, gdi::Rgb(k, k, k));
    ASSERT_EQ(app->NbVignettes, 73);
    for (int n = 1; n <= 51; ++n) list->Chkmail[n].SetValue(1);
    Run(mv::mnujoindrecoch_Click);
    EXPECT_EQ(BoxesWith(Entry(279)), 1);
    EXPECT_TRUE(M().sent.empty());
    EXPECT_EQ(Tick(51), 1);

    for (int n = 1; n <= 51; ++n) list->Chkmail[n].SetValue(0);
    list->Chkmail[73].SetValue(1);
    Run(mv::mnujoindrecoch_Click);
    EXPECT_EQ(Numbers(), (std::vector<int>{73}));
    EXPECT_EQ(Tick(73), 2);
}

// Writing to us says nothing when the send fails, only when there is no client at all.
TEST_F(MailTest, WriteToUsIsQuietUnlessThereIsNoClient) {
    M().sendResult = 32001;
    Run(mv::envoimail);
    EXPECT_EQ(M().sent.size(), 1u);
    EXPECT_TRUE(be.boxes.empty());
    M().signOnResult = M().sendResult = platform::Mailer::kNoClient;
    Run(mv::envoimail);
    ASSERT_EQ(be.boxes.size(), 1u);
    EXPECT_NE(be.boxes[0].prompt.find(mv::kAdresseSupport), std::wstring::npos);
}

TEST_F(MailTest, TheUploaderGetsTheJpegPathUnquotedBehindOneBlank) {
    auto& P = be.processes;
    const std::wstring programme = be.shell.programFolder + L"\\prjForum.exe";
    app->VignetteCourante = 0;
    Run(mv::mnuimgforum_Click);
    EXPECT_EQ(BoxesWith(Entry(151)), 1);
    EXPECT_TRUE(P.started.empty());

    app->params.PrefixeNom = L"mes captures ";
    ui::Dispatch(be, [&] { list->clickimage1(2, false); });
    Run(mv::mnuimgforum_Click);
    ASSERT_EQ(P.started.size(), 1u);
    const std::wstring& ligne = P.started[0].commandLine;
    const std::wstring debut = L"\"" + programme + L"\" ";
    ASSERT_EQ(ligne.rfind(debut, 0), 0u);
    const std::wstring jpeg = ligne.substr(debut.size());
    EXPECT_EQ(jpeg.rfind(app->DossierTemp + L"\\mes captures ", 0), 0u);
    EXPECT_EQ(jpeg.substr(jpeg.size() - 6), L"-2.jpg");
    EXPECT_TRUE(rt::FileExists(jpeg));

    // An uploader that cannot start says so.
    P.unstartable = {programme};
    Run(mv::mnuimgforum_Click);
    EXPECT_EQ(BoxesWith(Entry(151)), 2);
}

} // namespace
