#include "session/Compression.h"

#include "core/NoOtherValue.h"
#include "session/Messages.h"

namespace pictavo {

std::uint8_t AskCompression(const Session& session, Ports& ports, std::uint8_t typeCode) {
    if (session.settings.CompressGPF || ports.prompts.Confirm(CompressQuestion(session.texts)))
        return typeCode;
    return typeCode & static_cast<std::uint8_t>(~kCompressedBit);
}

std::optional<std::uint8_t> TypeOf(SaveCommand command) {
    switch (command) {
        case SaveCommand::Gpf1Bit:
            return kType1BitCompressed;
        case SaveCommand::Gpf8Bit:
            return kType8BitCompressed;
        case SaveCommand::Gpf16Bit:
            return kType16BitCompressed;
        case SaveCommand::Gpf24Bit:
            return kType24BitCompressed;
        case SaveCommand::Bmp:
        case SaveCommand::Png:
            return std::nullopt;
    }
    NoOtherValue();
}

Status CheckWritable(std::uint8_t typeCode) {
    if (typeCode != kType1BitCompressed) return {};
    return Fail(ErrorKind::OneBitCompressed, "compressed pictures of 1 bit are not written");
}

}  // namespace pictavo
