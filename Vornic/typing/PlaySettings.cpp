#include "Vornic/typing/PlaySettings.h"

namespace vornic {

bool wantsBinaural(Placement placement, OutputKind kind, bool onHeadphones) {
    if (placement != Placement::desk) {
        return false;
    }
    switch (kind) {
    case OutputKind::headphones:
        return true;
    case OutputKind::speakers:
        return false;
    case OutputKind::automatic:
        return onHeadphones;
    }
    return false;
}

} // namespace vornic
