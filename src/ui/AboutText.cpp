#include "ui/AboutText.h"

#include "core/Version.h"

namespace pictavo {

std::string AboutText(const LanguageTable& texts) {
    const std::string credit = std::string(kCaption) + ", by the Pictavo developers";
    return credit + "\rEdits the pictures in the firmware of Siemens mobile phones\r\r" + texts.str_tnx +
           ":\rall who took these phones apart and wrote down what they found\r\r" +
           "The manual is ReadMe.txt, which the Help menu opens\r" + "Free software under the MIT licence";
}

}  // namespace pictavo
