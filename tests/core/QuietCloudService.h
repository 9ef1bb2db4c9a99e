// A cloud service whose every call is dropped: test fakes derive from it and answer only the
// calls they look at.
#pragma once

#include "cloud/CloudService.h"

namespace tidemark::testing {

class QuietCloudService : public CloudService {
public:
    void
    accountStatus(std::function<void(CloudAccountStatus, std::optional<CloudError>)>) override {}
    void fetchUserRecordId(
        std::function<void(std::optional<std::string>, std::optional<CloudError>)>) override {}
    void
    fetchZone(const std::string&,
              std::function<void(std::optional<std::string>, std::optional<CloudError>)>) override {
    }
    void saveZone(const std::string&, std::function<void(std::optional<CloudError>)>) override {}
    void fetchRecord(
        const CloudRecordId&,
        std::function<void(std::optional<CloudRecord>, std::optional<CloudError>)>) override {}
    void saveRecord(const CloudRecord&, std::function<void(std::optional<CloudError>)>) override {}
    void modifyRecords(std::vector<CloudRecord>, std::vector<CloudRecordId>,
                       std::function<void(std::optional<CloudError>)>) override {}
    void queryRecords(const std::string&, std::optional<CloudQueryCursor>, std::size_t,
                      std::function<void(std::vector<CloudRecord>, std::optional<CloudQueryCursor>,
                                         std::optional<CloudError>)>) override {}
};

} // namespace tidemark::testing
