#pragma once

#include <cstdint>

#include "site/session_store.h"

namespace pradelis::component {
class CRM;
}

namespace pradelis::site {

/// Who `Logar`'s array (in `user.information`) describes: fills its element 4 with the users whose
/// records he may see, and reads the groups that he administers.
/// \param team_version  state of the groups before this reading
UserPtr read_user(component::CRM& crm, User user, std::int32_t team_version);

/// Whether the user's account was not deleted since he logged in.
bool is_live(component::CRM& crm, const User& user);

/// Ends the usage session that the login opened. A usage session that another application opened, or
/// has ended, is left alone.
void end_usage_session(component::CRM& crm, const User& user);
void end_usage_session(component::CRM& crm, std::int32_t usage_session);

}  // namespace pradelis::site
