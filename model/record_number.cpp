#include "record_number.h"

#include "conversions.h"
#include "dao_constants.h"
#include "database.h"
#include "resume_next.h"

namespace ledgix::model {

std::int32_t FreeNumber(std::int32_t number, std::string sql, std::string_view column, std::int32_t& highest_seen) {
    bool taken = false;
    if (store::gDatabase) {
        const auto look = [&] {
            store::ClosingRecordset rows;
            store::DataCreateSet(rows.get(), sql, dao::kOpenForwardOnly, dao::kReadOnly);
            for (; !store::DataEOF(rows.get()); store::DataMoveNext(rows.get())) {
                std::int32_t held = runtime::ToInt32(rows[column]);
                taken = taken || held == number;
                if (held != kNewNumber)
                    TakeNumber(held, highest_seen);
            }
        };
        runtime::ResumeNext(look, [](const runtime::RuntimeError&) {});
    }
    if (taken) {
        number = kNewNumber;
        TakeNumber(number, highest_seen);
    }
    return number;
}

}  // namespace ledgix::model
