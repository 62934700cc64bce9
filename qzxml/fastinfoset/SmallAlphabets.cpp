#include "qzxml/fastinfoset/SmallAlphabets.h"

namespace QzXmlLib16::detail {

const SmallAlphabet SmallAlphabet::kAlphabets[2] = {SmallAlphabet(kNumericAlphabet),
                                                    SmallAlphabet(kDateAndTimeAlphabet)};

}  // namespace QzXmlLib16::detail
