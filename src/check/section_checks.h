/// The check of the whole model. Relies on the model.
#pragma once

namespace zek {

/// Both passes over every section; the second only when the first found nothing wrong. True when the model is valid.
bool CheckModel();

}  // namespace zek
