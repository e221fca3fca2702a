#include "session/Messages.h"

#include "codec/GPFcodec.h"
#include "core/BasicCalculations_Tarsk.h"
#include "core/ErrorText.h"
#include "core/NoOtherValue.h"
#include "core/PathText.h"
#include "session/FileKind.h"

namespace pictavo {

namespace {

constexpr const char* kLineBreak = "\r";
constexpr const char* kGraphicFiles = "Graphic files";

template <typename Extensions>
void AddPatterns(const Extensions& extensions, FileFilter& filter) {
    for (const char* extension : extensions) filter.patterns.push_back(std::string("*") + extension);
}

Notice PlainNotice(const Error& error) {
    if (error.path.empty()) return {"", DetailText(error)};
    return {"", PathText(error.path) + kLineBreak + DetailText(error)};
}

std::string Title(const LanguageTable& texts, const std::string& subject, const std::string& end) {
    return texts.str_PlSel + " " + subject + " " + end;
}

}  // namespace

Question OverwriteQuestion(const LanguageTable& texts, const std::filesystem::path& path) {
    return {Asked::Overwrite, texts.str_faExi + "!", PathText(path) + kLineBreak + texts.str_fChan + "?",
            path};
}

Question CompressQuestion(const LanguageTable& texts) {
    return {Asked::Compress, "", texts.str_CmpgpfF + "?", {}};
}

Question Gpf2Question(const LanguageTable& texts) {
    return {Asked::WriteGpf2, "", texts.cap_mnSGPF + "2?", {}};
}

Question AlphaQuestion(const LanguageTable& texts) {
    return {Asked::SaveWithAlpha, "", texts.str_SalCh + "?", {}};
}

Question RegisterTypesQuestion(const LanguageTable& texts) {
    return {Asked::RegisterTypes, "", texts.str_RegExt + "?", {}};
}

Question ApplyToAllQuestion() {
    return {Asked::ApplyToAll, "", "Применить для всех?", {}};
}

Notice MissingFile(const LanguageTable& texts, const std::filesystem::path& path, MissingForm form) {
    const std::string sentence = texts.str_fnExi + "!";
    switch (form) {
        case MissingForm::PathThenText:
            return {"", PathText(path) + kLineBreak + sentence};
        case MissingForm::TextThenPath:
            return {"", sentence + kLineBreak + PathText(path)};
        case MissingForm::TextBeforePathEnd:
            return {"", texts.str_fnExi + kLineBreak + PathText(path) + "!"};
        case MissingForm::TextAlone:
            return {"", sentence};
    }
    NoOtherValue();
}

Notice Completion(const LanguageTable& texts) {
    return {"", texts.str_Succes};
}

Notice CountedCompletion(const LanguageTable& texts, std::size_t count) {
    return {" " + std::to_string(count), texts.str_Succes};
}

std::vector<Notice> NoticesOf(const LanguageTable& texts, const Error& error) {
    switch (error.kind) {
        case ErrorKind::FileMissing:
            return {MissingFile(texts, error.path, MissingForm::PathThenText)};
        case ErrorKind::ConverterMissing:
            return {{"nConvert", texts.str_fnExi + "!"}};
        case ErrorKind::NoGpf:
            return {{"", texts.str_UNKfile}, {"", "error was occupated"}};
        case ErrorKind::NotSupported:
            return {{"", texts.str_CntCmp + "!"}};
        case ErrorKind::OneBitCompressed:
            return {{"", "1bit GPF " + texts.str_CntCmp}};
        case ErrorKind::TooLarge:
            return {{"", texts.str_LarPic + "!"}};
        case ErrorKind::BlockTooLarge:
            return {{"", texts.str_RpitLarge}};
        case ErrorKind::BadBitDepth:
        case ErrorKind::NoFreeMemory:
        case ErrorKind::PngTooLarge:
            return {{"", error.detail}};
        case ErrorKind::ReadFailed:
        case ErrorKind::WriteFailed:
        case ErrorKind::FileExists:
        case ErrorKind::OutputIsInput:
        case ErrorKind::UnknownFile:
        case ErrorKind::Truncated:
        case ErrorKind::Malformed:
        case ErrorKind::ConverterFailed:
        case ErrorKind::EmptyBlock:
        case ErrorKind::SourceMissing:
        case ErrorKind::NoSuchPicture:
        case ErrorKind::Overflow:
        case ErrorKind::Conflict:
        case ErrorKind::Stopped:
            return {PlainNotice(error)};
    }
    NoOtherValue();
}

FileFilter GraphicFiles() {
    FileFilter filter{kGraphicFiles, {}};
    AddPatterns(kGpfExtensions, filter);
    AddPatterns(kPlainPictureExtensions, filter);
    return filter;
}

FileFilter PlainGraphicFiles() {
    FileFilter filter{kGraphicFiles, {}};
    AddPatterns(kPlainPictureExtensions, filter);
    return filter;
}

std::string OpenTitle(const LanguageTable& texts, const std::string& subject) {
    return Title(texts, subject, texts.str_4open);
}

std::string SaveTitle(const LanguageTable& texts, const std::string& subject) {
    return Title(texts, subject, texts.str_4save);
}

std::string FolderTitle(const LanguageTable& texts, const std::string& purpose) {
    return Title(texts, texts.str_cFold, purpose);
}

}  // namespace pictavo
