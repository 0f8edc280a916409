#pragma once

namespace tests {

// Reaches a private member of a class without changing the class: an explicit instantiation may
// name it, and the friend that the instantiation defines hands its pointer on. For every member,
// in namespace tests itself, where the friend belongs:
//
//     struct ListOfService {
//         using type = std::unique_ptr<MonitorList> MonitorData::*;
//         friend type memberOf(ListOfService);
//     };
//     template struct PrivateMember<ListOfService, &MonitorData::monitorList>;
//
//     service.*memberOf(ListOfService{})
//
// Only for a state that no public member can bring about.
template <typename Tag, typename Tag::type pointer>
struct PrivateMember {
    friend typename Tag::type memberOf(Tag) { return pointer; }
};

} // namespace tests
