// The options dialog: controls from the settings line, the hotkey boxes, the line joined
// back on OK and what takes effect at once.
#include "app_fixture.h"
#include "runtime/strings.h"
#include "settings/settings_file.h"

namespace {

class OptionsTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        StartMarked();
    }
    mv::Options& Ouvrir() {
        mv::Options& o = *app->options;
        ui::Dispatch(be, [&] {
            o.Load();
            o.ShowNonModal();
        });
        return o;
    }
    void Ok() { be.Click(app->options->OKButton); }
    // What OK wrote to the settings file: its first line.
    std::wstring LigneFichier() const {
        const std::string t = ReadText(mv::CheminParams(app->DossierParams));
        return rt::FromCp1252(t.substr(0, t.find("\r\n")));
    }
    // Types c into a hotkey box as the user does: the key down, then the new text.
    void Taper(ui::TextBox& t, const std::wstring& c) {
        ui::Dispatch(be, [&] {
            int16_t k = 0;
            t.OnKeyDown(k, 0);
            t.TextEdited(c);
        });
    }
};

// The line, not the record, fills the dialog. Confirmed unchanged, OK writes the line back
// whole, 300 columns with the temporary folder's end mark last, and the file holds it.
TEST_F(OptionsTest, ControlsComeFromTheLineAndOkWritesItBack) {
    mv::Params& p = app->params;
    p.LigneParams.replace(106, 3, L"101");
    p.LigneParams.replace(109, 1, L"7");
    p.Silence = 1;
    mv::Options& o = Ouvrir();
    EXPECT_EQ(o.Slidqual.Value(), 7);
    Ok();
    EXPECT_FALSE(o.Visible());
    const std::wstring& l = p.LigneParams;
    ASSERT_EQ(l.size(), 300u);
    EXPECT_EQ(l.substr(100, 5), L"ZMEFY");
    EXPECT_EQ(l.substr(106, 8), L"1017Capt");
    EXPECT_EQ(l.substr(280), rt::Left(p.DossierTemp + L"<=======", 20)); // cut at 300
    EXPECT_EQ(LigneFichier(), l);
    EXPECT_EQ(p.QualiteJpeg, 70);
}

TEST_F(OptionsTest, PrefixIntervalAndSlidersAsJoined) {
    mv::Params& p = app->params;
    mv::Options& o = Ouvrir();
    // Too short a prefix is refused with the dialog left open; a long one is cut to four.
    o.Txtpref.SetText(L"AB");
    Ok();
    EXPECT_EQ(BoxesWith(Entry(66)), 1);
    EXPECT_TRUE(o.Visible());
    o.Txtpref.SetText(L"ABCDEF");
    // An interval over the limit is stored as 65000; an empty one as 00000.
    o.Txtinterval.SetText(L"70000");
    Ok();
    EXPECT_EQ(p.PrefixeNom, L"ABCD");
    EXPECT_EQ(p.LigneParams.substr(121, 5), L"65000");
    EXPECT_EQ(main->TimPeriod.Interval(), 65000);
    Ouvrir();
    o.Txtinterval.SetText(L"");
    Ok();
    EXPECT_EQ(p.LigneParams.substr(121, 5), L"00000");
    EXPECT_EQ(main->TimPeriod.Interval(), 0);

    // A quality of 10 is stored as 0; a pause of 10 moves every later column one right.
    Ouvrir();
    o.Slidqual.SetValue(10);
    o.Slidtempo.SetValue(10);
    Ok();
    EXPECT_EQ(p.QualiteJpeg, 0);
    EXPECT_EQ(p.Tempo, 1.0);
    EXPECT_EQ(p.LigneParams.substr(116, 2), L"10");
    EXPECT_EQ(p.LigneParams.substr(122, 5), L"00000");

    // An editor path longer than 150 characters: the error box, and the run goes on.
    Ouvrir();
    o.TxtEdit.SetText(L"C:\\" + std::wstring(160, L'e') + L".exe");
    Ok();
    EXPECT_EQ(be.lastError, 5);
    EXPECT_FALSE(be.ended);
}

TEST_F(OptionsTest, HotkeyBoxesAndTheirConflicts) {
    mv::Params& p = app->params;
    mv::Options& o = Ouvrir();
    Taper(o.TextTouche1, L"k");
    EXPECT_EQ(o.TextTouche1.Text(), L"K");
    for (const wchar_t* refuse : {L"0", L",", L"", L"[", L"\u00e9"}) {
        Taper(o.TextTouche2, refuse);
        EXPECT_EQ(o.TextTouche2.Text(), L"M") << refuse;
    }
    // The fifth may equal any other (equal keys among the first four are checked under
    // Wine); it reaches the file but not the polling.
    Taper(o.TextTouche5, L"m");
    Ok();
    EXPECT_FALSE(o.Visible());
    EXPECT_EQ(p.ToucheZone, L'K');
    EXPECT_EQ(p.ToucheDoubleH, L'Y');
    EXPECT_EQ(LigneFichier().substr(100, 5), L"KMEFM");
}

// The periodic timer stops while a browse dialog is open; the rectangle of the frozen screen
// goes when its box is cleared and stays gone after Cancel.
TEST_F(OptionsTest, BrowsingCancelAndTheRectangleBox) {
    mv::Options& o = Ouvrir();
    main->TimPeriod.SetEnabled(true);
    bool periodiquePendant = true;
    be.dialogResponder = [&](ui::CommonDialog& d, ui::FileDialogKind) {
        periodiquePendant = main->TimPeriod.Enabled();
        d.fileName = L"C:\\Users\\me\\Pictures\\Capture 01";
        return true;
    };
    be.Click(o.Cdeparcourir);
    EXPECT_FALSE(periodiquePendant);
    EXPECT_TRUE(main->TimPeriod.Enabled());
    EXPECT_EQ(o.Text1.Text(), L"C:\\Users\\me\\Pictures");
    be.dialogResponder = [](ui::CommonDialog&, ui::FileDialogKind) { return false; };
    be.Click(o.CdeParcEdit);
    EXPECT_TRUE(main->TimPeriod.Enabled());
    main->TimPeriod.SetEnabled(false);

    app->full->Load();
    app->full->rectsel.SetVisible(true);
    o.Check1[6].SetValue(1);
    be.Click(o.Check1[6]);
    EXPECT_FALSE(app->full->rectsel.Visible());
    be.Click(o.CdeAnnul);
    EXPECT_FALSE(o.Visible());
    EXPECT_FALSE(app->full->rectsel.Visible());
}

// The settings file holds single bytes: a path outside the code page goes in its short form
// while the dialog shows its real name, and one without a short form is refused with a box,
// nothing written.
TEST_F(OptionsTest, PathsOutsideTheCodePageGoShortOrAreRefused) {
    mv::Options& o = Ouvrir();
    const std::wstring dossier = L"C:\\Users\\me\\截图 📷";
    const std::wstring editeur = L"C:\\Outils\\画图.exe";
    be.shell.shortPaths[dossier] = L"C:\\Users\\me\\4C7E~1";
    o.Text1.SetText(dossier);
    o.TxtEdit.SetText(editeur);
    const std::wstring avant = LigneFichier();
    Ok();
    EXPECT_TRUE(o.Visible());
    EXPECT_EQ(BoxesWith(Entry(286) + L"\r\n\r\n" + editeur), 1);
    EXPECT_EQ(LigneFichier(), avant);

    be.shell.shortPaths[editeur] = L"C:\\Outils\\0A1B~1.EXE";
    Ok();
    EXPECT_FALSE(o.Visible());
    EXPECT_EQ(app->params.DossierEnregCourt, L"C:\\Users\\me\\4C7E~1");
    EXPECT_NE(LigneFichier().find(L"C:\\Outils\\0A1B~1.EXE"), std::wstring::npos);
    // The boxes keep the real names, at this opening and at a fresh start's.
    EXPECT_EQ(o.Text1.Text(), dossier);
    EXPECT_EQ(o.TxtEdit.Text(), editeur);
    app->options->Unload();
    Ouvrir();
    EXPECT_EQ(app->options->Text1.Text(), dossier);
    EXPECT_EQ(app->options->TxtEdit.Text(), editeur);
}

} // namespace
