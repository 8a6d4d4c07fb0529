#include "config/DoseRecord.h"

namespace vastrelline {

DoseRecord& SharedDoseRecord() {
    static DoseRecord record;
    return record;
}

}  // namespace vastrelline
