// AT requests: radio and service settings.
#include "at_requests.h"

#include <cstdio>

using namespace cmif;

int shared_CMIF_set_AT_qfirehose(void)
{
    static constexpr AtRequest request{"shared_CMIF_set_AT_qfirehose", CMIF_AT_DOWNLOAD_MODE,
                                       daemon_lines};
    static constinit AtSites sites;
    return cmif_send_only(request, sites);
}

int shared_CMIF_set_FactoryReset(void)
{
    static constexpr AtRequest request{"shared_CMIF_set_FactoryReset", CMIF_AT_FACTORY_RESET,
                                       daemon_lines};
    static constinit AtSites sites;
    return send_request(request, sites);
}

int shared_CMIF_set_timezone(void)
{
    static constexpr AtRequest request{"shared_CMIF_set_timezone", CMIF_AT_SET_TIME_ZONE,
                                       daemon_lines};
    static constinit AtSites sites;
    return send_request(request, sites);
}

int shared_CMIF_set_mobileNetworkMode(int mode)
{
    static constexpr AtRequest request{"shared_CMIF_set_mobileNetworkMode",
                                       CMIF_AT_SET_SEARCH_MODE};
    static constexpr Choice modes[] = {{0, "0"}, {1, "1"}, {2, "2"}, {3, "3"}};
    static constinit AtSites sites;
    return send_value(request, sites, Echo::no, mode, text_for(mode, modes));
}

int shared_CMIF_set_DomainServiceStatus(int status)
{
    static constexpr AtRequest request{"shared_CMIF_set_DomainServiceStatus",
                                       CMIF_AT_SET_PACKET_DOMAIN};
    static constexpr Choice states[] = {{0, "0"}, {1, "1"}};
    static constinit AtSites sites;
    return send_value(request, sites, Echo::yes, status, text_for(status, states));
}

// The daemon's key is misspelt.
int shared_CMIF_get_DomainServiceStatus(char *out)
{
    static constexpr AtRequest request{"shared_CMIF_get_DomainServiceStatus",
                                       CMIF_AT_GET_PACKET_DOMAIN};
    static constinit AtSites sites;
    return query_text(request, sites, "lte_pocket_domain_servive_status", out);
}

int shared_CMIF_set_mobileInternationalRoam(int mode)
{
    static constexpr AtRequest request{"shared_CMIF_set_mobileInternationalRoam",
                                       CMIF_AT_SET_ROAMING};
    static constexpr Choice modes[] = {{2, "1"}, {1, "2"}, {0, "255"}};
    static constinit AtSites sites;
    return send_value(request, sites, Echo::yes, mode, text_for(mode, modes));
}

// Any other mode ends after the look-ups, which create the queues in any case.
int shared_CMIF_SetNetworkMode(int mode)
{
    static constexpr AtRequest request{"shared_CMIF_SetNetworkMode", CMIF_AT_SELECT_AUTOMATICALLY};
    static constinit AtSites sites;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        if (mode != 1)
            return message.skip();
        message.trace_type();
        message.set_text(message.record.set_value, "0");
        sites.first.print("set_value=%s\n", message.record.set_value);
    });
}

int shared_Set_Operator_Selection_switch_format(int format)
{
    static constexpr AtRequest request{"shared_Set_Operator_Selection_switch_format",
                                       CMIF_AT_SET_OPERATOR_FORMAT};
    static constinit AtSites sites;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        char *value = message.record.set_value;
        std::snprintf(value, sizeof message.record.set_value, "%d", format);
        sites.first.print("cmd_send_buff = %s\n", value);
        message.trace_type();
        sites.second.print("snd_op.set_value=%s\n", value);
    });
}
