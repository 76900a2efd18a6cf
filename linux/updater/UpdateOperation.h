#pragma once

namespace orrivane {

/// Something under way; destroying it ends it quietly and leaves nothing behind.
class UpdateOperation {
  public:
    UpdateOperation() = default;
    UpdateOperation(const UpdateOperation&) = delete;
    UpdateOperation& operator=(const UpdateOperation&) = delete;
    virtual ~UpdateOperation() = default;
};

} // namespace orrivane
