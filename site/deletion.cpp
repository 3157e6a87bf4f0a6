#include "site/deletion.h"

#include "dataaccess/schema/fixed.h"
#include "values/clock.h"

namespace pradelis::site {

void enter_deletion(Context& context, const DeletedObject& object) {
  context.crm().Excluir(object.name, "", context.person(), now(), dataaccess::fixed::application,
                        object.item_class, object.id);
}

}  // namespace pradelis::site
