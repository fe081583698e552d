// Memory that runs short on demand.
#pragma once

// While one of these lives, the n-th call of malloc, calloc or realloc (counted from 1) fails, and no other thread may
// allocate. Only calls from code that is linked statically count: the library, and the tests themselves.
//
//   for (int n = 1;; ++n) {
//     ... a fresh record ...
//     AllocationFailure failure(n);
//     const bool done = WqFoo_Bar(&record);
//     if (!failure.happened()) break; // the call needs fewer than n allocations
//     EXPECT_FALSE(done);
//     ... the record is as it was, and usable ...
//   }
class AllocationFailure {
 public:
  explicit AllocationFailure(int n);
  ~AllocationFailure();
  AllocationFailure(const AllocationFailure &) = delete;
  AllocationFailure &operator=(const AllocationFailure &) = delete;

  // Whether the failure has taken place. No further call fails once this was asked.
  bool happened();
};
