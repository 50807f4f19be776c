// AT requests: radio and service settings.
#include "at_requests.h"

#include <cstdio>
#include <iterator>

using namespace cmif;

int shared_CMIF_set_AT_qfirehose(void)
{
    static constinit AtRequest request{"shared_CMIF_set_AT_qfirehose", 20, daemon_lines};
    return cmif_send_only(request);
}

int shared_CMIF_set_FactoryReset(void)
{
    static constinit AtRequest request{"shared_CMIF_set_FactoryReset", 21, daemon_lines};
    return ask(request).result;
}

int shared_CMIF_set_timezone(void)
{
    static constinit AtRequest request{"shared_CMIF_set_timezone", 1, daemon_lines};
    return ask(request).result;
}

int shared_CMIF_set_mobileNetworkMode(int mode)
{
    static constinit ValueRequest self{{"shared_CMIF_set_mobileNetworkMode", 2}};
    static constexpr Choice modes[] = {{0, "0"}, {1, "1"}, {2, "2"}, {3, "3"}};
    return send_value(self, Echo::no, mode, chosen(mode, modes, std::size(modes)));
}

int shared_CMIF_set_DomainServiceStatus(int status)
{
    static constinit ValueRequest self{{"shared_CMIF_set_DomainServiceStatus", 7}};
    static constexpr Choice states[] = {{0, "0"}, {1, "1"}};
    return send_value(self, Echo::yes, status, chosen(status, states, std::size(states)));
}

// The misspelt key is the daemon's.
int shared_CMIF_get_DomainServiceStatus(char *out)
{
    static constinit QueryRequest self{{"shared_CMIF_get_DomainServiceStatus", 6},
                                       "lte_pocket_domain_servive_status"};
    return query(self, out);
}

int shared_CMIF_set_mobileInternationalRoam(int mode)
{
    static constinit ValueRequest self{{"shared_CMIF_set_mobileInternationalRoam", 15}};
    static constexpr Choice modes[] = {{2, "1"}, {1, "2"}, {0, "255"}};
    return send_value(self, Echo::yes, mode, chosen(mode, modes, std::size(modes)));
}

int shared_CMIF_SetNetworkMode(int mode)
{
    static constinit AtRequest request{"shared_CMIF_SetNetworkMode", 3};
    static constinit AtSite site;
    return cmif_round_trip(
               request,
               [&](AtMessage &message) {
                   if (mode != 1)
                       return Then::stop; // behind the look-ups: the queues exist either way
                   message.put(message.record.set_value, "0");
                   message.announce();
                   site.print("set_value=%s\n", message.record.set_value);
                   return Then::send;
               })
        .result;
}

int shared_Set_Operator_Selection_switch_format(int format)
{
    static constinit AtRequest request{"shared_Set_Operator_Selection_switch_format", 16};
    static constinit AtSite buffer_site, value_site;
    return cmif_round_trip(request,
                           [&](AtMessage &message) {
                               char *value = message.record.set_value;
                               std::snprintf(value, sizeof message.record.set_value, "%d", format);
                               buffer_site.print("cmd_send_buff = %s\n", value);
                               message.announce();
                               value_site.print("snd_op.set_value=%s\n", value);
                               return Then::send;
                           })
        .result;
}
