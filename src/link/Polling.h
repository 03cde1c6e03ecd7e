// A bounded wait by looking again and again.
#pragma once

namespace vorn {

// Looks at most polls times and sleeps after each look that found nothing; true as soon as a look finds something.
// What came during the last sleep still counts: the caller finds it when it reads.
template <typename Look, typename Sleep>
bool poll(int polls, Look look, Sleep sleep) {
  for (int count = 0; count < polls; ++count) {
    if (look()) return true;
    sleep();
  }
  return look();
}

}  // namespace vorn
