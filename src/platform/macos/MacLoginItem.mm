#include "LoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

namespace tarnwick {

bool LoginItem::isEnabled() {
    return [SMAppService mainAppService].status == SMAppServiceStatusEnabled;
}

void LoginItem::setEnabled(bool enabled) {
    SMAppService* const application = [SMAppService mainAppService];
    if (!enabled) {
        [application unregisterAndReturnError:nullptr];
        return;
    }
    [application registerAndReturnError:nullptr];
    // Who has switched it off there can only switch it on there.
    if (application.status == SMAppServiceStatusRequiresApproval)
        [SMAppService openSystemSettingsLoginItems];
}

} // namespace tarnwick
