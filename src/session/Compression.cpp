#include "session/Compression.h"

#include "session/Messages.h"

namespace pictavo {

std::uint8_t AskCompression(const Session& session, Ports& ports, std::uint8_t typeCode) {
    if (session.settings.CompressGPF || ports.prompts.Confirm(CompressQuestion(session.texts)))
        return typeCode;
    return typeCode & static_cast<std::uint8_t>(~kCompressedBit);
}

Status CheckWritable(std::uint8_t typeCode) {
    if (typeCode != kType1BitCompressed) return {};
    return Fail(ErrorKind::OneBitCompressed, "compressed pictures of 1 bit are not written");
}

}  // namespace pictavo
