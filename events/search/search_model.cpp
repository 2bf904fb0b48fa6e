#include "events/search/search_model.h"

#include "solsys/platform.h"
#include "solsys/time_scales.h"

namespace solsys::search {

SearchModel::SearchModel(CSWSolSys* borrowed) : model_(borrowed) {
    if (model_ == nullptr) {
        own_ = std::make_unique<CSWSolSys>();
        if (own_->InitSys(StarwickPath::GetEphemerisPath())) {
            model_ = own_.get();
        } else {
            own_.reset();
            PrintDebugString("Solar system not installed\n");
        }
    }
    ET_UT::Init("");
}

SearchModel::~SearchModel() {
    own_.reset();
    ET_UT::Finish();
}

}  // namespace solsys::search
