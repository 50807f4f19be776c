/*
 * CMIF: the connection-manager interface of an LTE router.
 *
 * A flat C interface to read the state of the modem, the SIM and the mobile network, and to request
 * changes from two connection-manager daemons. Valid as C99 and as C++.
 *
 * Conventions:
 *
 *  1. Results. Every call but get_time returns an int: 0 for success, or one of `enum cmif_result`.
 *     An AT request returns the daemon's own code unchanged, which may also be 2, 3 or -1. Those of
 *     the daemons supplied are the numbers of +CME ERROR (3GPP TS 27.007) from 10 on, its smaller
 *     ones plus 200, 220 "file not written" and 221 "a search is running".
 *  2. Memory. The library allocates nothing and keeps no pointer after a call. Outputs go to memory
 *     that the caller owns. A text is copied whole and without a bound: its buffer must hold the
 *     longest value that the platform's store can hold, and a NUL. Where a size is stated, that
 *     size is enough. An output is written only when the result is 0, unless the function says
 *     otherwise.
 *  3. NULL. "5 for NULL" means that the function checks its pointers before it asks a daemon or
 *     writes an output. In all other functions a NULL text is sent as an empty one, and a NULL
 *     array receives nothing.
 *  4. Blocking. Getters don't block. An AT request blocks while the request queue is full, and then
 *     until the daemon answers with the same request code. There is no time-out: a failed receive
 *     is repeated at once, forever. A QMI call blocks in the same way, but a failed receive ends
 *     it. A signal handler that runs while the request queue is full ends the send: the result is
 *     3, and nothing was sent.
 *  5. Threads. The library creates no threads; its only lock is the debug log's semaphore. Any
 *     thread may call at any time unless a function says otherwise, provided that the platform's
 *     store answers each thread in a buffer of its own, as the store supplied with the library
 *     does. Replies are matched by request code alone: two callers, threads or processes, that wait
 *     for the same code at the same time may receive each other's reply.
 *  6. Trace. Each place that may print a trace line reads its switch from the store on its first
 *     use, and prints when the switch is above 0: "debug_at_cmif" for getters and AT requests,
 *     "debug_qmi_cmif" for QMI calls. A later change has no effect, but a switch of -1 is read
 *     again on each use. Lines go to standard output through C stdio. A comment names what a
 *     function prints whatever the switch is.
 *     CAUTION: with "debug_at_cmif" on, SIM requests print PINs, PUKs and keys in clear text; with
 *     "debug_qmi_cmif" on, shared_CMIF_get_profile_settings prints the password in clear text.
 *  7. Store. A getter returns what a daemon stored last. A key that was never stored reads as "".
 *  8. Daemons. The library passes texts and numbers on; their interpretation is up to the daemon.
 *     Where a meaning is given, it is that of the daemons supplied with the library.
 */

/*
 * The functions are in groups, each with a manual page. The head of a group has the results of its
 * functions, and what blocks, which threads may call and what is printed; the comment of a function
 * has such a line only where it differs. A `name` in back quotes is a parameter.
 */
#ifndef CMIF_H
#define CMIF_H

/* The version of this header; the build takes its own from here. */
#define CMIF_VERSION_MAJOR 1
#define CMIF_VERSION_MINOR 1
#define CMIF_VERSION_PATCH 0

#if defined(__GNUC__)
#define CMIF_PRINTF_LIKE __attribute__((format(printf, 1, 2)))
#else
#define CMIF_PRINTF_LIKE
#endif

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The library's own results. */
enum cmif_result {
    CMIF_NO_REPLY_QUEUE = -1, /* AT: the reply queue can't be looked up; nothing was sent */
    CMIF_OK = 0,              /* success */
    CMIF_NOT_READY = 1,       /* QMI: the daemon's message thread isn't ready; nothing was sent */
    CMIF_NO_QUEUE = 2,        /* a queue can't be looked up; nothing was sent */
    CMIF_SEND_FAILED = 3,     /* the send failed */
    CMIF_RECEIVE_FAILED = 4,  /* QMI: the receive failed after the request was sent */
    CMIF_INVALID = 5,         /* a NULL pointer, a profile text that is too long, or no APN */
    CMIF_NO_FILE = 6,         /* the provider list file can't be opened */
    CMIF_PROFILE_BUSY = 7     /* QMI: a profile modification is in progress */
};

/* ------------------------------------------------------------------------------------------------
 * cmif_getters(3): plain getters, one stored value each
 *
 * Each copies a value unchanged: `out` receives the text and a NUL, and needs room for the longest
 * value of the store. The SIM's status is "READY", what it asks for ("SIM PIN", "SIM PUK", or
 * "PH-NET PIN" for the key of the network personalization lock), "NOT INSERTED", "NOT READY", or
 * "SIM FAILURE". The access technology in use is "GSM", "UMTS" or "LTE".
 *
 * Result: 0, or 5 for NULL.
 * Blocks: no.
 * Threads: any.
 * Prints: a line, traced.
 * ---------------------------------------------------------------------------------------------- */

/* The modem */
int shared_CMIF_get_mobileHWVersion(char *out); /* hardware version */
int shared_CMIF_get_mobileFWVersion(char *out); /* firmware version */
int shared_CMIF_get_mobileIMEI(char *out);      /* IMEI, 15 digits */

/* The SIM */
int shared_CMIF_get_mobileIMSI(char *out);       /* IMSI */
int shared_CMIF_get_mobileSimICCID(char *out);   /* ICCID */
int shared_CMIF_get_mobileSimStatus(char *out);  /* its status, a text of those above */
int shared_CMIF_get_SubscriberNumber(char *out); /* the subscriber's telephone number */

/* The serving cell, and the previous one */
int shared_CMIF_get_mobileNetworkMCC(char *out);      /* mobile country code, digits */
int shared_CMIF_get_mobileLastKnownMCC(char *out);    /* MCC of the previous cell */
int shared_CMIF_get_mobileNetworkMNC(char *out);      /* mobile network code, digits */
int shared_CMIF_get_mobileLastKnownMNC(char *out);    /* MNC of the previous cell */
int shared_CMIF_get_mobileNetworkLAC(char *out);      /* location area code, hexadecimal */
int shared_CMIF_get_mobileLastKnownLAC(char *out);    /* LAC of the previous cell */
int shared_CMIF_get_mobileNetworkCellID(char *out);   /* cell identity, hexadecimal */
int shared_CMIF_get_mobileLastKnownCellID(char *out); /* identity of the previous cell */

/* The radio */
int shared_CMIF_get_mobileRSSI(char *out);          /* RSSI in dBm */
int shared_CMIF_get_mobile_3G_RSSI(char *out);      /* RSSI on 3G, in dBm */
int shared_CMIF_get_mobileRSRP(char *out);          /* RSRP in dBm */
int shared_CMIF_get_mobileRSRQ(char *out);          /* RSRQ in dB */
int shared_CMIF_get_mobileRSSINR(char *out);        /* SINR in dB */
int shared_CMIF_get_mobileRadioBand(char *out);     /* band: "LTE BAND 3" */
int shared_CMIF_get_mobileChannelNumber(char *out); /* channel number; always prints its line */
int shared_CMIF_get_mobileACtiveNetwork(char *out); /* access technology in use */

/* The operator */
int shared_CMIF_get_mobileNetworkOperatorName(char *out); /* its name in the format selected */
int shared_CMIF_GetOperatorLongName(char *out);           /* its long name */
int shared_CMIF_GetOperatorShortName(char *out);          /* its short name */
int shared_CMIF_GetOperatorPlmnName(char *out);           /* its numeric code, MCC and MNC */

/* The packet data connection */
int shared_CMIF_get_mobileIPv4_string(char *out); /* IPv4 address */
int shared_CMIF_get_mobileIPv6_string(char *out); /* IPv6 address; never prints */
int shared_CMIF_get_mobileNetworkAPN(char *out);  /* access point name in use */
int shared_CMIF_get_mobileLastKnownAPN(
    char *out); /* access point name of the previous connection */

/* ------------------------------------------------------------------------------------------------
 * cmif_converted(3): derived getters, stored values converted
 *
 * A stored value that isn't listed is not an error: the output gets the default, or keeps the
 * caller's value ("else unchanged"), both without a trace line.
 *
 * Result: 0, or 5 for NULL.
 * Blocks: no.
 * Threads: any.
 * Prints: a line, traced.
 * ---------------------------------------------------------------------------------------------- */

/* Network search mode: `mode` receives 0 all technologies, 1 GSM alone, 2 UMTS alone, 3 LTE alone,
 * as stored, 4 for anything else. */
int shared_CMIF_get_mobileNetworkMode(int *mode);

/* Band region, from the same stored value as the network search mode: for stored 0 `region`
 * receives 1 (all technologies), for 2 it is 2 (UMTS alone), for 3 it is 3 (LTE alone); for
 * anything else, 1 too, it is 4. */
int shared_CMIF_GetBandRegion(int *region);

/* Operator selection mode: `mode` receives 1 automatic (stored "0"), 2 manual (anything else),
 * both traced. */
int shared_CMIF_GetNetworkMode(int *mode);

/* International roaming: `mode` receives 0 automatic (stored "255"), 1 on ("2"), 2 off ("1"); else
 * unchanged. */
int shared_CMIF_get_mobileInternationalRoam(int *mode);

/* Registration: `status` receives 0 registered (home or roaming), 1 searching, 2 not registered,
 * denied, unknown or anything else. */
int shared_CMIF_get_mobileNetworkStatus(int *status);

/* Access technology: `technology` receives 0 GSM, 1 UTRAN, 2 EGPRS, 3 HSDPA, 4 HSUPA, 5 HSPA, 6
 * E-UTRAN, for stored 0, 2, 3, 4, 5, 6, 7 (3GPP TS 27.007 <AcT>), and 7 for stored 100, which has
 * no meaning there; else unchanged.
 * Prints: nothing. */
int shared_CMIF_get_OperatorSelectAct(int *technology);

/* PDP type: `type` receives 0 for "IP", 1 "PPP", 2 "IPV6", 3 "IPV4V6"; else unchanged.
 * Prints: a line, traced, with `type`'s number in any case: initialise it. */
int shared_CMIF_get_mobileNetworkPDPType(int *type);

/* On LTE `out` receives the duplex mode, a space and the access technology ("FDD LTE"); otherwise
 * the technology alone. `out` needs room for two of the longest values, a space and a NUL. */
int shared_CMIF_get_mobile4gMode(char *out);

/* `out` receives the number of digits of the MNC as decimal text, and needs 11 bytes. Also stores
 * that text under "lte_query_network_mnc_format", without saving the store. */
int shared_CMIF_get_mobileNetworkMNCFormat(char *out);

/* A placeholder: leaves `out` alone.
 * Result: always 5.
 * Prints: nothing. */
int shared_CMIF_get_mobileIPv4Address(char *out);

/* ------------------------------------------------------------------------------------------------
 * cmif_summary(3): wireless broadband summary
 * ---------------------------------------------------------------------------------------------- */

/* The summary: what a page shows of the modem. */
typedef struct WirelessBroadbandInfo {
    char NewModemIdentity[20];      /* hardware version */
    char NewModemSWversion[20];     /* firmware version */
    char NewIMSI[20];               /* IMSI */
    char NewIMEI[20];               /* IMEI */
    char NewOperatorName[20];       /* the operator's name */
    char NewNetworkMode[20];        /* operator selection: "Auto" or "Manual" */
    int NewRSSI;                    /* RSSI in dBm */
    char NewModemCurrentStatus[20]; /* always "!sharedGetSIMStatus" */
    char NewModemType[20];          /* "2G", "3G" or "4G" */
    char NewPhoneNumber[20];        /* or more in the caller's own type: copied without a bound */
} WirelessBroadbandInfo;

/* Fills `info`. Clear the record first: a selection mode or a technology other than those above
 * leaves its field unchanged, and the trace line prints what is there. A value of more than 19
 * characters runs on into the next fields; it is cut at the end of the record as declared here.
 * Only the phone number is copied whole: where the store may hold one of more than 19 characters,
 * make this record the first member of a larger type, with the room directly after it.
 * Result: 0, or 5 for NULL.
 * Blocks: no.
 * Threads: any.
 * Prints: ten lines, traced, one for each field. */
int shared_CMIF_GetWirelessBroadbandInfo(WirelessBroadbandInfo *info);

/* ------------------------------------------------------------------------------------------------
 * cmif_simcard(3): AT requests, SIM security
 *
 * Of every AT request: a lookup creates a queue that doesn't exist. Texts are sent unchanged. Each
 * should fit its field: 29 characters, 21 for a value. A longer one runs on into the following
 * fields and is cut at the end of the record's text part (112 bytes). A query writes its outputs
 * whenever the daemon has answered, whatever its code is, and nothing when no answer came (the
 * library's own 2, -1 or 3). PINs, PUKs and keys are printed in clear text when the trace is on.
 *
 * Result: the daemon's code; 2 no request queue, -1 no reply queue, 3 not sent.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its steps and fields, traced.
 * ---------------------------------------------------------------------------------------------- */

/* `counters` receives the attempts left: [0] PIN1, [1] PUK1, [2] PIN2, [3] PUK2. Only the first
 * three characters of a stored value count; a key that was never stored gives 0. */
int shared_CMIF_get_mobilePINPUKC(int counters[4]);

/* `out` receives whether the SIM asks for its PIN: "1" it does, "0" it doesn't, "" unknown. Room as
 * for a plain getter.
 * Result: 5 for NULL, else as above. */
int shared_CMIF_get_mobileSimPINMode(char *out);

/* Switches the SIM's PIN on and off. The daemon takes `first` as the mode ("1" ask for the PIN, "0"
 * don't) and `second` as the PIN, each of at most 29 characters.
 * Result: 5 when either is NULL, else as above. */
int shared_CMIF_set_mobileSimPINMode(const char *first, const char *second);

/* Sets the network personalization lock. The daemon takes `first` as the facility ("PN"), at most
 * 21 characters, `second` as its mode ("1" lock, "0" unlock), `third` as the network (MCC and MNC,
 * 5 or 6 digits) and `fourth` as the control key, each of at most 29. */
int shared_CMIF_set_NetworkPersonalizationLock(const char *first, const char *second,
                                               const char *third, const char *fourth);

/* Removes the network personalization lock with its control key, `key`: at most 29 characters. */
int shared_CMIF_set_NetworkPersonalizationUNLock(const char *key);

/* Enters the PIN, `pin`: at most 29 characters. */
int shared_CMIF_set_EntermobilePIN(const char *pin);

/* Changes the PIN. The daemon takes `first` as the old one and `second` as the new one, each of at
 * most 29 characters. */
int shared_CMIF_set_ChangemobileSimPIN(const char *first, const char *second);

/* Unblocks the PIN. The daemon takes `first` as the PUK and `second` as the new PIN, each of at
 * most 29 characters. */
int shared_CMIF_set_EntermobilePINPUK(const char *first, const char *second);

/* ------------------------------------------------------------------------------------------------
 * cmif_radio(3): AT requests, radio and service settings
 *
 * A number that isn't listed is sent too, with an empty value.
 *
 * Result: the daemon's code; 2 no request queue, -1 no reply queue, 3 not sent.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its steps and fields, traced.
 * ---------------------------------------------------------------------------------------------- */

/* Switches the modem to its firmware-download mode, without waiting for a reply.
 * Result: 0 once the request is queued; 2 no request queue, 3 not sent.
 * Blocks: while the request queue is full.
 * Threads: any. */
int shared_CMIF_set_AT_qfirehose(void);

/* Restores the modem's factory settings. */
int shared_CMIF_set_FactoryReset(void);

/* Sets the modem's time zone; the daemon takes it from the system. */
int shared_CMIF_set_timezone(void);

/* Network search mode: `mode` 0 all technologies, 1 GSM alone, 2 UMTS alone, 3 LTE alone. */
int shared_CMIF_set_mobileNetworkMode(int mode);

/* Packet-switched domain: `status` 0 detaches, 1 attaches. */
int shared_CMIF_set_DomainServiceStatus(int status);

/* `out` receives the packet-switched domain's state: "0" detached, "1" attached, "" unknown. Room
 * as for a plain getter.
 * Result: 5 for NULL, else as above. */
int shared_CMIF_get_DomainServiceStatus(char *out);

/* International roaming: `mode` 0 automatic, 1 on, 2 off. */
int shared_CMIF_set_mobileInternationalRoam(int mode);

/* `mode` 1 selects the operator automatically. Any other number sends nothing.
 * Result: as above; 0 for any other number, after the look-up of both queues. */
int shared_CMIF_SetNetworkMode(int mode);

/* Format of the operator's name: `format` 0 long, 1 short, 2 numeric (3GPP TS 27.007 <format>). Any
 * number is sent as it is. */
int shared_Set_Operator_Selection_switch_format(int format);

/* ------------------------------------------------------------------------------------------------
 * cmif_operators(3): AT requests, operator selection and the provider list
 *
 * Result: the daemon's code; 2 no request queue, -1 no reply queue, 3 not sent.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its steps and fields, traced.
 * ---------------------------------------------------------------------------------------------- */

/* An operator of the provider list. */
typedef struct cmif_provider_info {
    char oper_long[20];    /* long name */
    char oper_short[20];   /* short name */
    char oper_numeric[20]; /* MCC and MNC, 5 or 6 digits */
    int stat;              /* 0 unknown, 1 available, 2 current, 3 forbidden */
    int act;               /* 3GPP TS 27.007 <AcT>: 0 GSM, 2 UTRAN, 7 E-UTRAN */
} cmif_provider_info;

/* Reads "/tmp/lte_provider_list", which the daemon writes during a search; asks no daemon. `list`
 * needs one record for each parenthesised group of the file, at most 511. The number of records is
 * not returned, and a field that a group lacks is left unchanged: clear the array first, and look
 * for the first record that is still clear. Each group fills a record, ranges such as "(0-4)" too,
 * which set "stat" alone. When a group is shorter than an earlier one, its last field runs on into
 * the earlier one's text, up to the next separator; "()" reads the previous group again. Files are
 * cut at 1023 bytes, groups at 127, numbers at 7 and names at 19.
 * Result: 0 when the file can be opened, whatever it holds, else 6.
 * Blocks: no.
 * Threads: any.
 * Prints: the file and its groups, always. */
int shared_CMIF_GetNetworkProviderList(cmif_provider_info *list);

/* Registers with one operator. The daemon takes `provider` as its numeric code (MCC and MNC) and
 * `provider2` as the access technology (3GPP TS 27.007 <AcT>: "0" GSM, "2" UTRAN, "7" E-UTRAN; ""
 * any), each of at most 29 characters.
 * Result: 5 when either is NULL, else as above. */
int shared_CMIF_SetNetworkProvider(const char *provider, const char *provider2);

/* State of the search: the daemon's code is the whole answer. 221 while a search is running, else
 * the code that the last search has returned; 0 before the first. */
int shared_CMIF_get_ModeManualSearch(void);

/* Searches for operators. The daemon writes the provider list and then answers, after seconds or
 * minutes. */
int shared_CMIF_set_ModeManualSearch(void);

/* A text helper, not a request. Copies the characters between the first two double quotes of `src`
 * to `dst`, or all of `src` when it has no quote. Writes NO terminating NUL: clear `dst` first.
 * `dst` needs strlen(src) bytes. Neither pointer may be NULL.
 * Result: 0, or -1 (nothing copied) for an opening quote without a closing one.
 * Blocks: no.
 * Threads: any.
 * Prints: nothing. */
int symbol_filter(const char *src, char *dst);

/* ------------------------------------------------------------------------------------------------
 * cmif_messages(3): AT requests, short messages
 *
 * Result: the daemon's code; 2 no request queue, -1 no reply queue, 3 not sent.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its steps and fields, traced.
 * ---------------------------------------------------------------------------------------------- */

/* A stored message. */
typedef struct cmif_sms_info {
    int id;             /* index in the modem's message storage */
    unsigned char stat; /* 0 unread, 1 any other state */
    char da[20];        /* the other party's number, cut to 19 characters */
    char scts[50];      /* service centre time stamp, cut to 49 */
    char text[1024];    /* body, cut to 1023 bytes; a stored "%%" becomes "%" */
} cmif_sms_info;

/* Lists the stored messages. `count` and `unreads` receive the daemon's numbers. `messages` needs
 * `*count` records, without an upper bound, and receives none for a count below 1. `*count` is read
 * again before each record.
 * Result: 5 when `count` or `unreads` is NULL, else as above. */
int shared_CMIF_get_mobileSMSInfo(cmif_sms_info *messages, int *count, int *unreads);

/* Deletes messages. The daemon takes `index` as the index and `index2` as the delete flag of 3GPP
 * TS 27.005: 0 that message; whatever the index is, 1 all that are read, 2 also those sent, 3 also
 * those not sent, 4 all. */
int shared_CMIF_set_DeletemobileSMS(int index, int index2);

/* ------------------------------------------------------------------------------------------------
 * cmif_device(3): AT requests, band region, functionality, profile, device management
 *
 * Result: the daemon's code; 2 no request queue, -1 no reply queue, 3 not sent.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its steps and fields, traced.
 * ---------------------------------------------------------------------------------------------- */

/* Band region: `region` 1 all technologies, 2 UMTS alone, 3 LTE alone. Any other number is sent
 * too, with an empty value. Has the request code of shared_CMIF_set_mobileNetworkMode. */
int shared_CMIF_SetBandRegion(int region);

/* Functionality level (3GPP TS 27.007 <fun>): `mode` 0 minimum, 1 full, 4 radio off. Only the low 8
 * bits are sent.
 * Result: as above, but 2 when either queue can't be looked up; never -1 of its own. */
int shared_CMIF_set_phone_functionality(int mode);

/* Sets a connection profile of the modem by its number, `profile_id`, 1 to 16. The daemon takes
 * `first` as the PDP type ("IP", "PPP", "IPV6" or "IPV4V6") and `second` as the APN; each is cut to
 * 29 characters. */
int shared_CMIF_set_Profile(int profile_id, const char *first, const char *second);

/* Starts an over-the-air device-management session. */
int shared_CMIF_set_TriggerOTADMSession(void);

/* Updates the stored PDP type and APN from the modem's profile 3. */
int shared_CMIF_get_SyncProfile3(void);

/* ------------------------------------------------------------------------------------------------
 * cmif_connection(3): QMI calls, the data connection
 *
 * A call that records its caller first writes the caller's process name and ID to the trace and to
 * the debug log.
 *
 * Result: 0; 1 not ready, 2 no queue, 3 not sent, 4 not received.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its own steps and outcome, always; those of the exchange, traced; after a failed receive
 *     the system's error to standard error.
 * ---------------------------------------------------------------------------------------------- */

/* The time stamp of the debug log's lines. The text is the library's and lies in one static buffer,
 * which the next call overwrites.
 * Result: the current local time as "MM-DD_hh:mm:ss:mmm", never NULL.
 * Blocks: no.
 * Threads: one at a time.
 * Prints: nothing. */
const char *get_time(void);

/* `state` receives 0 unknown, 1 disconnected, 2 between the two, 3 connected. A stored state other
 * than 0 to 3 gives 0. Reads the store alone.
 * Result: 0; 5 for NULL; 7 while a profile is being modified (`state` is then unchanged).
 * Blocks: no.
 * Threads: any.
 * Prints: a line for a stored state out of range, always. */
int shared_CMIF_get_connection_status(int *state);

/* Starts the data connection. Records its caller.
 * Result: 0 started or already connected; 5 no APN is set ("lte_qmi_apn"); 1 not ready, 2 no queue,
 *     3 not sent, 4 not received.
 * Blocks: while a profile is being modified, first in one-second sleeps, each with a line, at most
 *     the sum of "lte_qmi_wait_time_before_restart" and "lte_qmi_wait_time_after_restart" in
 *     seconds (a negative sum has no limit); then as above. */
int shared_CMIF_start_network_interface(void);

/* Stops the data connection. Records its caller.
 * Result: 0 stopped or already disconnected; 1 not ready, 2 no queue, 3 not sent, 4 not received.
 * Blocks: while a profile is being modified, first in one-second sleeps, each with a line, at most
 *     10; then as above. */
int shared_CMIF_stop_network_interface(void);

/* ------------------------------------------------------------------------------------------------
 * cmif_profile(3): QMI calls, the connection profile
 *
 * A call that records its caller first writes the caller's process name and ID to the trace and to
 * the debug log.
 * ---------------------------------------------------------------------------------------------- */

/* A connection profile; its texts end with a NUL. */
typedef struct qmi_profile {
    char apn[41];       /* access point name */
    char user[129];     /* user name, or "" */
    char password[129]; /* password, or "" */
    int auth;           /* 0 to 3: none, PAP, CHAP, PAP or CHAP */
    int pdp;            /* 0 to 3: IPv4, PPP, IPv6, IPv4v6 */
    int curIpFamily;    /* 0 or 1: IPv4, IPv6 */
} qmi_profile;

/* `profile` receives the profile as the daemon stored it, its texts cut to 40 and 128 characters
 * and terminated. Reads the store alone. Records its caller, for NULL too.
 * Result: 0, or 5 for NULL.
 * Blocks: no.
 * Threads: any.
 * Prints: six lines, traced; one has the password in clear text. */
int shared_CMIF_get_profile_settings(qmi_profile *profile);

/* Sends a new profile, `profile`. `from_auto_apn` is 1 when automatic APN selection asks, else 0. A
 * number out of its range is sent as 0, with a line. While the call runs, the file
 * "/tmp/modify_profile_in_progress" exists; two shell commands create and remove it, each with a
 * line. Records its caller.
 * Result: 0 when it was sent, or ignored because automatic selection has recorded another APN; 5
 *     when a text fills its field without a NUL; 1 not ready, 2 no queue, 3 not sent, 4 not
 *     received.
 * Blocks: for two shell commands; while the request queue is full, then until the daemon answers,
 *     without a limit.
 * Threads: any; two callers may receive each other's reply, and share the file: the first to end
 *     removes it for both.
 * Prints: its own steps and outcome, always; those of the exchange, traced; after a failed receive
 *     the system's error to standard error. */
int shared_CMIF_modify_profile_settings(qmi_profile profile, int from_auto_apn);

/* ------------------------------------------------------------------------------------------------
 * cmif_status(3): QMI calls, status and small requests
 *
 * A call that records its caller first writes the caller's process name and ID to the trace and to
 * the debug log.
 *
 * Result: 0; 1 not ready, 2 no queue, 3 not sent, 4 not received.
 * Blocks: while the request queue is full, then until the daemon answers, without a limit.
 * Threads: any; two callers of one request code may receive each other's reply.
 * Prints: its own steps and outcome, always; those of the exchange, traced; after a failed receive
 *     the system's error to standard error.
 * ---------------------------------------------------------------------------------------------- */

/* `out` receives the modem's revision: exactly 100 bytes, padded with zeros; an answer of 100
 * characters or more has no NUL. Records its caller, for NULL too.
 * Result: 5 for NULL, else as above. */
int shared_CMIF_get_device_rev_id(char *out);

/* `status` receives 0 absent, 1 not ready, 2 ready, 3 PIN needed, 4 PUK needed, 5 network
 * personalization, 6 bad; any other number is the daemon's.
 * Result: 5 for NULL, else as above. */
int shared_CMIF_get_sim_status(int *status);

/* `out` receives the packet-switched service's state, "attached", "detached" or "": exactly 50
 * bytes, padded with zeros; an answer of 50 characters or more has no NUL.
 * Result: 5 for NULL, else as above. */
int shared_CMIF_get_ps_service(char *out);

/* Switches the modem to its firmware-download mode, without waiting for a reply. Records its
 * caller.
 * Result: 0 once the request is queued; 1 not ready, 2 no queue (it doesn't create one), 3 not
 *     sent.
 * Blocks: while the request queue is full.
 * Threads: any. */
int shared_CMIF_set_CM_qfirehose(void);

/* `uptime` receives the seconds since the connection was made. Reads the store alone.
 * Result: 0, or 5 for NULL.
 * Blocks: no.
 * Threads: any.
 * Prints: a line for NULL, always. */
int shared_CMIF_get_connection_uptime(unsigned int *uptime);

/* `enabled` receives 1 when the connection is to be started at boot, else 0. Reads the store alone.
 * Result: 0, or 5 for NULL.
 * Blocks: no.
 * Threads: any.
 * Prints: nothing. */
int shared_CMIF_get_auto_connect_when_start_up(int *enabled);

/* Stores "on" when `enabled` is 1 and "off" for any other number, and saves the store. Asks no
 * daemon.
 * Result: always 0.
 * Blocks: for as long as the store needs to save.
 * Threads: any.
 * Prints: a line, always, which has "on" for any number except 0. */
int shared_CMIF_set_auto_connect_when_start_up(int enabled);

/* ------------------------------------------------------------------------------------------------
 * cmif_log(3): the debug log, "/data/debug_lte.txt" and two older generations
 *
 * Call init once in each process before any write, and write nothing after deinit; neither may run
 * at the same time as another call. Between them any thread may write. Several processes may share
 * the file. QMI calls write here too.
 *
 * Blocks: no.
 * Threads: one, while no other call runs.
 * Prints: a line, always.
 * ---------------------------------------------------------------------------------------------- */

/* Reads "debug_lte_enable", which turns the log on unless it is 0, and prepares the log.
 * Result: 0, or -1 when the semaphore can't be initialised. */
int shared_debug_lte_mutex_init(void);

/* Ends the log. Up to 128 bytes of text that is still pending are not written.
 * Result: 0.
 * Prints: a line, if the log is on. */
int shared_debug_lte_mutex_deinit(void);

/* Appends one message, `format` and its values as for printf, cut to 255 characters; adds nothing,
 * not even a newline. Writes to the file only when the buffer of 128 bytes is full. Does nothing
 * while the log is off.
 * Result: without a meaning.
 * Blocks: while another thread writes, and for the write to the file.
 * Threads: any, between init and deinit.
 * Prints: nothing. */
int shared_debug_lte_write_log_file(const char *format, ...) CMIF_PRINTF_LIKE;

/* Shifts the files by one generation and starts a new one with the date, by four shell commands.
 * Works whether the log is on or off. Pending text goes to the new file.
 * Result: the last command's status, as of system(3).
 * Blocks: for the four commands.
 * Threads: one at a time in the whole system.
 * Prints: its name and each command, always. */
int shared_debug_lte_backup_log_file(void);

/* ------------------------------------------------------------------------------------------------
 * cmif_daemons(3): for authors of daemons, the queues, records and marker files
 *
 * System V message queues, mode 0666. The type of a record is the platform's long. Sizes passed to
 * msgsnd and msgrcv count the payload alone, whose layout is the same on 32 and 64 bits.
 *
 * A reply to an AT request has exactly 116 bytes of payload: a longer one is never received, and
 * its caller repeats the receive forever; of a shorter one the missing bytes keep what the request
 * had there, 0 for ret_code. A reply to a QMI request has at most 316; a longer one fails the
 * receive.
 * ---------------------------------------------------------------------------------------------- */

/* clang-format off */
#define CMIF_AT_REQUEST_KEY     899  /* key of the queue to the AT daemon */
#define CMIF_AT_REPLY_KEY       900  /* key of the queue of its replies */
#define CMIF_QMI_REQUEST_KEY    1158 /* key of the queue to the QMI daemon */
#define CMIF_QMI_REPLY_KEY      1159 /* key of the queue of its replies */
#define CMIF_AT_PAYLOAD         116  /* bytes of a record of the AT channel, without the type */
#define CMIF_QMI_PAYLOAD        312  /* bytes of a record of the QMI channel, without the type */

#define CMIF_PROVIDER_LIST_FILE "/tmp/lte_provider_list"                /* written by the AT daemon */
#define CMIF_QMI_READY_FILE     "/tmp/lte_qmi_msg_handler_thread_ready" /* "on" when ready */
#define CMIF_PROFILE_BUSY_FILE  "/tmp/modify_profile_in_progress"       /* exists during a change */
#define CMIF_LOG_FILE           "/data/debug_lte.txt"                   /* the debug log */
#define CMIF_LOG_FILE_1         "/data/debug_lte_1.txt"                 /* the previous generation */
#define CMIF_LOG_FILE_2         "/data/debug_lte_2.txt"                 /* the oldest */

/* Request codes of the AT channel. 5 is not used. */
enum cmif_at_code {
    CMIF_AT_SET_TIME_ZONE = 1,            /* shared_CMIF_set_timezone */
    CMIF_AT_SET_SEARCH_MODE = 2,          /* shared_CMIF_set_mobileNetworkMode; the band region too */
    CMIF_AT_SELECT_AUTOMATICALLY = 3,     /* shared_CMIF_SetNetworkMode */
    CMIF_AT_GET_PIN_COUNTERS = 4,         /* shared_CMIF_get_mobilePINPUKC */
    CMIF_AT_GET_PACKET_DOMAIN = 6,        /* shared_CMIF_get_DomainServiceStatus */
    CMIF_AT_SET_PACKET_DOMAIN = 7,        /* shared_CMIF_set_DomainServiceStatus */
    CMIF_AT_GET_PIN_MODE = 8,             /* shared_CMIF_get_mobileSimPINMode */
    CMIF_AT_SET_PIN_MODE = 9,             /* shared_CMIF_set_mobileSimPINMode */
    CMIF_AT_LOCK_NETWORK = 10,            /* shared_CMIF_set_NetworkPersonalizationLock */
    CMIF_AT_UNLOCK_NETWORK = 11,          /* shared_CMIF_set_NetworkPersonalizationUNLock */
    CMIF_AT_ENTER_PIN = 12,               /* shared_CMIF_set_EntermobilePIN */
    CMIF_AT_CHANGE_PIN = 13,              /* shared_CMIF_set_ChangemobileSimPIN */
    CMIF_AT_ENTER_PUK = 14,               /* shared_CMIF_set_EntermobilePINPUK */
    CMIF_AT_SET_ROAMING = 15,             /* shared_CMIF_set_mobileInternationalRoam */
    CMIF_AT_SET_OPERATOR_FORMAT = 16,     /* shared_Set_Operator_Selection_switch_format */
    CMIF_AT_SELECT_OPERATOR = 17,         /* shared_CMIF_SetNetworkProvider */
    CMIF_AT_LIST_MESSAGES = 18,           /* shared_CMIF_get_mobileSMSInfo */
    CMIF_AT_DELETE_MESSAGES = 19,         /* shared_CMIF_set_DeletemobileSMS */
    CMIF_AT_DOWNLOAD_MODE = 20,           /* shared_CMIF_set_AT_qfirehose: never answered */
    CMIF_AT_FACTORY_RESET = 21,           /* shared_CMIF_set_FactoryReset */
    CMIF_AT_SET_FUNCTIONALITY = 22,       /* shared_CMIF_set_phone_functionality */
    CMIF_AT_GET_SEARCH_STATE = 23,        /* shared_CMIF_get_ModeManualSearch */
    CMIF_AT_SEARCH = 24,                  /* shared_CMIF_set_ModeManualSearch */
    CMIF_AT_SET_PROFILE = 25,             /* shared_CMIF_set_Profile */
    CMIF_AT_START_DEVICE_MANAGEMENT = 26, /* shared_CMIF_set_TriggerOTADMSession */
    CMIF_AT_SYNCHRONIZE_PROFILE = 27      /* shared_CMIF_get_SyncProfile3 */
};

/* Request codes of the QMI channel. 2 and 7 are not used. */
enum cmif_qmi_code {
    CMIF_QMI_GET_DEVICE_REVISION = 1, /* shared_CMIF_get_device_rev_id */
    CMIF_QMI_MODIFY_PROFILE = 3,      /* shared_CMIF_modify_profile_settings */
    CMIF_QMI_START = 4,               /* shared_CMIF_start_network_interface */
    CMIF_QMI_STOP = 5,                /* shared_CMIF_stop_network_interface */
    CMIF_QMI_GET_SIM_STATUS = 6,      /* shared_CMIF_get_sim_status */
    CMIF_QMI_GET_PACKET_SERVICE = 8,  /* shared_CMIF_get_ps_service */
    CMIF_QMI_DOWNLOAD_MODE = 9        /* shared_CMIF_set_CM_qfirehose: never answered */
};
/* clang-format on */

/* A request to the AT daemon, and its reply, of which only the type and ret_code count. */
struct cmif_msg {
    long mod_id;          /* request code; the reply carries the same */
    char set_string[30];  /* first text, with its NUL */
    char set_string2[30]; /* second text */
    char set_string3[30]; /* third text */
    char set_value[22];   /* value, with its NUL */
    int ret_code;         /* of a reply: the result */
};

/* A request to the QMI daemon, and its reply, which begins with a text or a 32-bit integer. */
struct qmi_msg {
    long mtype;                     /* request code; the reply carries the same */
    char payload[CMIF_QMI_PAYLOAD]; /* arguments; of a reply the answer */
};

/* The payload of a profile modification: texts with their NULs, and numbers as single digits. */
struct qmi_profile_payload {
    char apn[41];        /* access point name */
    char user[129];      /* user name */
    char password[129];  /* password */
    char auth[4];        /* "0" to "3" */
    char pdp[4];         /* "0" to "3" */
    char curIpFamily[4]; /* "0" or "1" */
    char unused;         /* 0 */
};

#ifdef __cplusplus
}
#endif

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#endif
