#include "core/PitRecordLayout.h"

namespace pictavo {

const PitRecordLayout& RecordLayoutOf(const FullflashImage& flash) {
    return flash.HasLongRecords() ? kLongRecord : kShortRecord;
}

bool FitsLimits(const PitRecordLayout& layout, int width, int height, int typeCode) {
    return width <= layout.mostWidth && height <= layout.mostHeight && typeCode <= kLastTypeCode;
}

}  // namespace pictavo
