#pragma once

/// A session with scripted ports, and verbs to bring it where a test needs it.

#include "codec/GPFcodec.h"
#include "core/BasicCalculations_Tarsk.h"
#include "samples/FileMakers.h"
#include "samples/FlashBuilder.h"
#include "samples/PictureEncoders.h"
#include "session/OpenFullflash.h"
#include "session/ReplacePictures.h"
#include "support/FourIcons.h"
#include "support/ScriptedPorts.h"
#include "support/TempFolder.h"

namespace pictavo::tests {

class SessionFixture : public ::testing::Test {
  protected:
    SessionFixture() {
        session.workFiles.folder = temp / "work";
        std::filesystem::create_directory(session.workFiles.folder);
        session.texts.str_UNKfile = "UNKfile";
        session.texts.str_Succes = "Succes";
        session.texts.str_PlSel = "PlSel";
        session.texts.str_CmpgpfF = "CmpgpfF";
        session.texts.str_SalCh = "SalCh";
        session.texts.str_CntCmp = "CntCmp";
        session.texts.str_LarPic = "LarPic";
        session.texts.str_fnExi = "fnExi";
        session.texts.str_faExi = "faExi";
        session.texts.str_fChan = "fChan";
        session.texts.str_4save = "4save";
        session.texts.str_4open = "4open";
        session.texts.str_cFold = "cFold";
        session.texts.str_RpitLarge = "RpitLarge";
        session.settings.nConvert = WriteFile(temp / "converter", std::string("a program")).string();
    }

    /// Writes the flash and opens it. The one that was open is closed first: Windows replaces no open file.
    void Open(const FlashBuilder& flash, const std::string& name = "flash.bin") {
        session.flash.source.reset();
        flashPath = temp / name;
        const samples::Outcome written = flash.WriteTo(flashPath);
        ASSERT_TRUE(written) << written.Reason();
        const Status opened = OpenFullflash(session, flashPath, scripted.progress);
        ASSERT_TRUE(opened) << opened.error().detail;
        flashBytes = ReadFile(flashPath);
    }

    /// A GPF2 file of one colour.
    std::filesystem::path WriteGpf2(const std::string& name, int width, int height, std::uint8_t type,
                                    Bytes stored) {
        const GpfHeader header{static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), type, 0,
                               true};
        return WriteFile(temp / name, ComposeGpf(header, stored));
    }

    /// Replaces a row by a drawing in the uncompressed twin of `compressedType`.
    void ReplaceBy(std::size_t row, const samples::Drawing& drawing, std::uint8_t compressedType) {
        const auto type = static_cast<std::uint8_t>(compressedType & 0x7F);
        const auto file = WriteGpf2("source.gpf2", drawing.width, drawing.height, type,
                                    samples::EncodeForPhone(drawing, type));
        scripted.prompts.Expect(Asked::Compress, false);
        const Outcome outcome = ReplaceFrom(session, scripted.ports, row, file, compressedType);
        ASSERT_TRUE(outcome.IsClean());
    }

    void ExpectFlashUntouched() const { EXPECT_EQ(ReadFile(flashPath), flashBytes); }

    Cell CellAt(int x, int y) const { return session.picture.raster.At(x, y); }

    TempFolder temp;
    Session session;
    ScriptedPorts scripted;
    std::filesystem::path flashPath;
    Bytes flashBytes;
};

}  // namespace pictavo::tests
