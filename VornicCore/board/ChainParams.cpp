#include "VornicCore/board/ChainParams.h"

namespace vornic {

const ChainParams& ChainParams::neutral() {
    static const ChainParams instance;
    return instance;
}

} // namespace vornic
