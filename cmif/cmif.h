/*
 * CMIF: the connection-manager interface of an LTE router.
 *
 * A flat C interface to read the state of the modem, the SIM and the mobile network, and to request
 * changes from two connection-manager daemons. Valid as C99 and as C++.
 *
 * Conventions. The comment of a function adds only what differs.
 *
 *  1. Results. Every call but get_time returns an int: 0 for success, or one of `enum cmif_result`.
 *     An AT request returns the daemon's own code unchanged, which may also be 2, 3 or -1.
 *  2. Memory. The library allocates nothing and keeps no pointer after a call. Outputs go to memory
 *     that the caller owns. A text is copied whole and without a bound: its buffer must hold the
 *     longest value that the platform's store can hold, and a NUL. Where a size is stated, that
 *     size is enough. An output is written only when the result is 0, unless the function says
 *     otherwise.
 *  3. NULL. "5 for NULL" means that the function checks its pointers before it does anything else.
 *     In all other functions a NULL text is sent as an empty one, and a NULL array receives
 *     nothing.
 *  4. Blocking. Getters don't block. An AT request blocks while the request queue is full, and then
 *     until the daemon answers with the same request code. There is no time-out: a failed receive
 *     is repeated at once, forever. A QMI call blocks in the same way, but a failed receive ends
 *     it.
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
#ifndef CMIF_H
#define CMIF_H

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

enum cmif_result {
    CMIF_NO_REPLY_QUEUE = -1, /* AT: the reply queue can't be looked up; nothing was sent */
    CMIF_OK = 0,
    CMIF_NOT_READY = 1,      /* QMI: the daemon's message thread isn't ready; nothing was sent */
    CMIF_NO_QUEUE = 2,       /* a queue can't be looked up; nothing was sent */
    CMIF_SEND_FAILED = 3,    /* the send failed */
    CMIF_RECEIVE_FAILED = 4, /* QMI: the receive failed after the request was sent */
    CMIF_INVALID = 5,        /* a NULL pointer, a profile text that is too long, or no APN */
    CMIF_NO_FILE = 6,        /* the provider list file can't be opened */
    CMIF_PROFILE_BUSY = 7    /* QMI: a profile modification is in progress */
};

/* ------------------------------------------------------------------------------------------------
 * Plain getters: one stored value each, copied unchanged.
 *
 * `out` receives the text. Result 0, or 5 for NULL. A getter traces one line unless noted.
 * ---------------------------------------------------------------------------------------------- */

/* The modem */
int shared_CMIF_get_mobileHWVersion(char *out);
int shared_CMIF_get_mobileFWVersion(char *out);
int shared_CMIF_get_mobileIMEI(char *out);

/* The SIM */
int shared_CMIF_get_mobileIMSI(char *out);
int shared_CMIF_get_mobileSimICCID(char *out);
int shared_CMIF_get_mobileSimStatus(char *out);
int shared_CMIF_get_SubscriberNumber(char *out);

/* The serving cell and the previous one: MCC and MNC in digits, LAC and cell identity in hex */
int shared_CMIF_get_mobileNetworkMCC(char *out);
int shared_CMIF_get_mobileLastKnownMCC(char *out);
int shared_CMIF_get_mobileNetworkMNC(char *out);
int shared_CMIF_get_mobileLastKnownMNC(char *out);
int shared_CMIF_get_mobileNetworkLAC(char *out);
int shared_CMIF_get_mobileLastKnownLAC(char *out);
int shared_CMIF_get_mobileNetworkCellID(char *out);
int shared_CMIF_get_mobileLastKnownCellID(char *out);

/* Radio measurements: RSSI and RSRP in dBm, RSRQ and SINR in dB */
int shared_CMIF_get_mobileRSSI(char *out);
int shared_CMIF_get_mobile_3G_RSSI(char *out);
int shared_CMIF_get_mobileRSRP(char *out);
int shared_CMIF_get_mobileRSRQ(char *out);
int shared_CMIF_get_mobileRSSINR(char *out);
int shared_CMIF_get_mobileRadioBand(char *out);
int shared_CMIF_get_mobileChannelNumber(char *out); /* prints it always */
int shared_CMIF_get_mobileACtiveNetwork(char *out);

/* The operator */
int shared_CMIF_get_mobileNetworkOperatorName(char *out);
int shared_CMIF_GetOperatorLongName(char *out);
int shared_CMIF_GetOperatorShortName(char *out);
int shared_CMIF_GetOperatorPlmnName(char *out);

/* The packet data connection */
int shared_CMIF_get_mobileIPv4_string(char *out);
int shared_CMIF_get_mobileIPv6_string(char *out); /* has no line */
int shared_CMIF_get_mobileNetworkAPN(char *out);
int shared_CMIF_get_mobileLastKnownAPN(char *out);

/* ------------------------------------------------------------------------------------------------
 * Derived getters: stored values, converted.
 *
 * Result 0, or 5 for NULL. A stored value that isn't listed is not an error: the output gets the
 * default, or keeps the caller's value ("else unchanged"), both without a trace line.
 * ---------------------------------------------------------------------------------------------- */

/* Network search mode: 0 to 3 as stored, 4 for anything else. */
int shared_CMIF_get_mobileNetworkMode(int *mode);

/* Band region, from the same stored value as the network search mode: stored 0 gives 1, 2 gives 2,
 * 3 gives 3; anything else, 1 too, gives 4. */
int shared_CMIF_GetBandRegion(int *region);

/* Operator selection mode: 1 automatic (stored "0"), 2 manual (anything else), both traced. */
int shared_CMIF_GetNetworkMode(int *mode);

/* International roaming: stored "255" gives 0, "2" gives 1, "1" gives 2; else unchanged. */
int shared_CMIF_get_mobileInternationalRoam(int *mode);

/* Registration: 0 registered (home or roaming), 1 searching, 2 not registered, denied, unknown or
 * anything else. */
int shared_CMIF_get_mobileNetworkStatus(int *status);

/* Access technology (3GPP TS 27.007 <AcT>): stored 0, 2, 3, 4, 5, 6, 7, 100 give 0 to 7 in this
 * order; else unchanged. Has no line. */
int shared_CMIF_get_OperatorSelectAct(int *technology);

/* PDP type: 0 "IP", 1 "PPP", 2 "IPV6", 3 "IPV4V6"; else unchanged. The trace line prints `*type` in
 * any case: initialise it. */
int shared_CMIF_get_mobileNetworkPDPType(int *type);

/* On LTE the duplex mode, a space and the access technology; otherwise the technology alone. `out`
 * needs room for two of the longest values, a space and a NUL. */
int shared_CMIF_get_mobile4gMode(char *out);

/* Number of digits of the MNC as decimal text; `out` needs 11 bytes. Also stores that text under
 * "lte_query_network_mnc_format", without saving the store. */
int shared_CMIF_get_mobileNetworkMNCFormat(char *out);

/* A placeholder: does nothing and always returns 5. */
int shared_CMIF_get_mobileIPv4Address(char *out);

/* ------------------------------------------------------------------------------------------------
 * Wireless broadband summary
 * ---------------------------------------------------------------------------------------------- */

typedef struct WirelessBroadbandInfo {
    char NewModemIdentity[20];
    char NewModemSWversion[20];
    char NewIMSI[20];
    char NewIMEI[20];
    char NewOperatorName[20];
    char NewNetworkMode[20];        /* "Auto" or "Manual" */
    int NewRSSI;                    /* dBm */
    char NewModemCurrentStatus[20]; /* always "!sharedGetSIMStatus" */
    char NewModemType[20];          /* "2G", "3G" or "4G" */
    char NewPhoneNumber[20];        /* or more in the caller's own type: copied without a bound */
} WirelessBroadbandInfo;

/* Fills `info`; 0, or 5 for NULL. Clear the record first: a selection mode or a technology other
 * than those above leaves its field unchanged, and the trace line prints what is there. A value of
 * more than 19 characters runs on into the next fields; it is cut at the end of the record as
 * declared here. Only the phone number is copied whole: where the store may hold one of more than
 * 19 characters, make this record the first member of a larger type, with the room directly after
 * it. Traces ten lines, one for each field. */
int shared_CMIF_GetWirelessBroadbandInfo(WirelessBroadbandInfo *info);

/* ------------------------------------------------------------------------------------------------
 * AT requests: SIM security
 *
 * Results of every AT request: the daemon's code; 2 no request queue, -1 no reply queue, 3 not
 * sent. A lookup creates a queue that doesn't exist. Texts are sent unchanged. Each should fit its
 * field: 29 characters, 21 for a value. A longer one runs on into the following fields and is cut
 * at the end of the record's text part (112 bytes). A query writes its outputs whenever the daemon
 * has answered, whatever its code is, and nothing when no answer came (the library's own 2, -1 or
 * 3).
 * ---------------------------------------------------------------------------------------------- */

/* Attempts left: counters[0] PIN1, [1] PUK1, [2] PIN2, [3] PUK2. Only the first three characters of
 * a stored value count; a key that was never stored gives 0. */
int shared_CMIF_get_mobilePINPUKC(int counters[4]);

/* `out` receives whether the SIM asks for its PIN, as text in the daemon's words. 5 for NULL. */
int shared_CMIF_get_mobileSimPINMode(char *out);

/* Switches the SIM's PIN on and off. The daemon takes the texts as the mode ("1" ask for the PIN,
 * "0" don't) and the PIN. 5 when either is NULL. */
int shared_CMIF_set_mobileSimPINMode(const char *first, const char *second);

/* Sets the network personalization lock. `first` is sent as the value, the others as the three
 * texts; the daemon takes them as the facility, its mode, the network and the control key. */
int shared_CMIF_set_NetworkPersonalizationLock(const char *first, const char *second,
                                               const char *third, const char *fourth);

/* Removes the network personalization lock with its control key. */
int shared_CMIF_set_NetworkPersonalizationUNLock(const char *key);

/* Enters the PIN. */
int shared_CMIF_set_EntermobilePIN(const char *pin);

/* Changes the PIN. The daemon takes the texts as the old and the new one. */
int shared_CMIF_set_ChangemobileSimPIN(const char *first, const char *second);

/* Unblocks the PIN. The daemon takes the texts as the PUK and the new PIN. */
int shared_CMIF_set_EntermobilePINPUK(const char *first, const char *second);

/* ------------------------------------------------------------------------------------------------
 * AT requests: radio and service settings
 *
 * A number that isn't listed is sent too, with an empty value.
 * ---------------------------------------------------------------------------------------------- */

/* Switches the modem to its firmware-download mode. Doesn't wait for a reply: 0 once the request is
 * queued, 2 or 3. Blocks while the request queue is full. */
int shared_CMIF_set_AT_qfirehose(void);

/* Restores the modem's factory settings. */
int shared_CMIF_set_FactoryReset(void);

/* Sets the modem's time zone; the daemon takes it from the system. */
int shared_CMIF_set_timezone(void);

/* Network search mode: 0 to 3. */
int shared_CMIF_set_mobileNetworkMode(int mode);

/* Packet-switched domain: 0 or 1. */
int shared_CMIF_set_DomainServiceStatus(int status);

/* `out` receives the packet-switched domain's state, as text in the daemon's words. 5 for NULL. */
int shared_CMIF_get_DomainServiceStatus(char *out);

/* International roaming: 0, 1 or 2, the codes that shared_CMIF_get_mobileInternationalRoam gives.
 * */
int shared_CMIF_set_mobileInternationalRoam(int mode);

/* 1 selects the operator automatically. Any other number sends nothing and returns 0 after the
 * look-up of both queues, which may fail (2 or -1). */
int shared_CMIF_SetNetworkMode(int mode);

/* Format of the operator's name: 0 long, 1 short, 2 numeric (3GPP TS 27.007 <format>). Any number
 * is sent as it is. */
int shared_Set_Operator_Selection_switch_format(int format);

/* ------------------------------------------------------------------------------------------------
 * AT requests: operator selection, and the provider list
 * ---------------------------------------------------------------------------------------------- */

typedef struct cmif_provider_info {
    char oper_long[20];
    char oper_short[20];
    char oper_numeric[20]; /* MCC and MNC, 5 or 6 digits */
    int stat;              /* 0 unknown, 1 available, 2 current, 3 forbidden */
    int act;               /* 3GPP TS 27.007 <AcT>: 0 GSM, 2 UTRAN, 7 E-UTRAN */
} cmif_provider_info;

/* Reads "/tmp/lte_provider_list", which the daemon writes during a search; asks no daemon and
 * doesn't block. `list` needs one record for each parenthesised group of the file, at most 511. The
 * number of records is not returned, and a field that a group lacks is left unchanged: clear the
 * array first, and look for the first record that is still clear. Each group fills a record, ranges
 * such as "(0-4)" too, which set `stat` alone. When a group is shorter than an earlier one, its
 * last field runs on into the earlier one's text, up to the next separator; "()" reads the previous
 * group again. Files are cut at 1023 bytes, groups at 127, numbers at 7 and names at 19. Result 0
 * when the file can be opened, whatever it holds, else 6. Prints its lines whatever the trace
 * switch is. */
int shared_CMIF_GetNetworkProviderList(cmif_provider_info *list);

/* Registers with one operator. The daemon takes the texts as its numeric code and the access
 * technology. 5 when either is NULL. */
int shared_CMIF_SetNetworkProvider(const char *provider, const char *provider2);

/* State of the search: the result is the daemon's code, which is the whole answer. */
int shared_CMIF_get_ModeManualSearch(void);

/* Searches for operators. The daemon writes the provider list and then answers, after seconds or
 * minutes. */
int shared_CMIF_set_ModeManualSearch(void);

/* A text helper, not a request. Copies the characters between the first two double quotes of `src`
 * to `dst`, or all of `src` when it has no quote. Writes NO terminating NUL: clear `dst` first.
 * `dst` needs strlen(src) bytes. 0, or -1 (nothing copied) for an opening quote without a closing
 * one. Neither pointer may be NULL. Doesn't print or block. */
int symbol_filter(const char *src, char *dst);

/* ------------------------------------------------------------------------------------------------
 * AT requests: short messages
 * ---------------------------------------------------------------------------------------------- */

typedef struct cmif_sms_info {
    int id;             /* index in the modem's message storage */
    unsigned char stat; /* 0 unread, 1 any other state */
    char da[20];        /* the other party's number, cut to 19 characters */
    char scts[50];      /* service centre time stamp, cut to 49 */
    char text[1024];    /* body, cut to 1023 bytes; a stored "%%" becomes "%" */
} cmif_sms_info;

/* Lists the stored messages. `count` and `unreads` receive the daemon's numbers; `messages` needs
 * `*count` records, without an upper bound, and receives none for a count below 1. `*count` is read
 * again before each record. 5 when `count` or `unreads` is NULL. */
int shared_CMIF_get_mobileSMSInfo(cmif_sms_info *messages, int *count, int *unreads);

/* Deletes messages. The daemon takes the numbers as the index and the delete flag of 3GPP TS
 * 27.005: flag 0 deletes that message, 4 deletes all. */
int shared_CMIF_set_DeletemobileSMS(int index, int index2);

/* ------------------------------------------------------------------------------------------------
 * AT requests: band region, phone functionality, profile, device management
 * ---------------------------------------------------------------------------------------------- */

/* Band region: 1, 2 or 3, as shared_CMIF_GetBandRegion returns it. Any other number is sent too,
 * with an empty value. Has the request code of shared_CMIF_set_mobileNetworkMode. */
int shared_CMIF_SetBandRegion(int region);

/* Functionality level (3GPP TS 27.007 <fun>): 0 minimum, 1 full, 4 radio off. Only the low 8 bits
 * are sent. 2 when either queue can't be looked up; never -1 of its own. */
int shared_CMIF_set_phone_functionality(int mode);

/* Sets a connection profile by its number. The daemon takes the texts as the PDP type and the APN;
 * each is cut to 29 characters. */
int shared_CMIF_set_Profile(int profile_id, const char *first, const char *second);

/* Starts an over-the-air device-management session. */
int shared_CMIF_set_TriggerOTADMSession(void);

/* Updates the stored profile from the modem's. */
int shared_CMIF_get_SyncProfile3(void);

/* ------------------------------------------------------------------------------------------------
 * QMI calls: the data connection
 *
 * Results of every QMI call that asks the daemon: 0, or 1 not ready, 2 no queue, 3 not sent, 4 not
 * received. Lines about a call's own steps and outcome are printed whatever the trace switch is;
 * after a failed receive the system's error goes to standard error. A call that records its caller
 * first writes the caller's process name and ID to the trace and to the debug log.
 * ---------------------------------------------------------------------------------------------- */

/* The current local time as "MM-DD_hh:mm:ss:mmm", never NULL. The text is the library's and lies in
 * one static buffer that the next call overwrites: not to be called by two threads at once. */
const char *get_time(void);

/* `state` receives 1 disconnected, 3 connected; 0 and 2 are neither. Result 0; 5 for NULL; 7
 * while a profile is being modified (`state` is then unchanged). Reads the store alone and doesn't
 * block. A stored state other than 0 to 3 gives 0 and prints a line. */
int shared_CMIF_get_connection_status(int *state);

/* Starts the data connection. 0 started or already connected; 5 no APN is set ("lte_qmi_apn").
 * While a profile is being modified, it first waits in one-second sleeps, each with a line, at most
 * the sum of "lte_qmi_wait_time_before_restart" and "lte_qmi_wait_time_after_restart" in seconds; a
 * negative sum has no limit. Records its caller. */
int shared_CMIF_start_network_interface(void);

/* Stops the data connection. 0 stopped or already disconnected. While a profile is being modified,
 * it first waits in the same way, at most 10 seconds. Records its caller. */
int shared_CMIF_stop_network_interface(void);

/* ------------------------------------------------------------------------------------------------
 * QMI calls: the connection profile
 * ---------------------------------------------------------------------------------------------- */

typedef struct qmi_profile {
    char apn[41];
    char user[129];
    char password[129];
    int auth;        /* 0 to 3: none, PAP, CHAP, PAP or CHAP */
    int pdp;         /* 0 to 3: IPv4, PPP, IPv6, IPv4v6 */
    int curIpFamily; /* 0 or 1: IPv4, IPv6 */
} qmi_profile;

/* `profile` receives the profile as the daemon stored it, its texts cut to 40 and 128 characters
 * and terminated. 0, or 5 for NULL. Reads the store alone and doesn't block. Records its caller,
 * for NULL too. */
int shared_CMIF_get_profile_settings(qmi_profile *profile);

/* Sends a new profile. `from_auto_apn`: 1 when automatic APN selection asks, else 0. Result 0 when
 * it was sent, or ignored because automatic selection has recorded another APN; 5 when a text fills
 * its field without a NUL. A number out of its range is sent as 0, with a line. While the call
 * runs, the file "/tmp/modify_profile_in_progress" exists; two shell commands create and remove it,
 * each with a line. Records its caller. */
int shared_CMIF_modify_profile_settings(qmi_profile profile, int from_auto_apn);

/* ------------------------------------------------------------------------------------------------
 * QMI calls: status and small requests
 * ---------------------------------------------------------------------------------------------- */

/* `out` receives the modem's revision: exactly 100 bytes, padded with zeros; a longer answer is
 * cut, without a NUL. 5 for NULL. Records its caller, for NULL too. */
int shared_CMIF_get_device_rev_id(char *out);

/* `status` receives 0 absent, 1 not ready, 2 ready, 3 PIN needed, 4 PUK needed, 5 network
 * personalization, 6 bad; any other number is the daemon's. 5 for NULL. */
int shared_CMIF_get_sim_status(int *status);

/* `out` receives the packet-switched service's state: exactly 50 bytes, padded with zeros; a longer
 * answer is cut, without a NUL. 5 for NULL. */
int shared_CMIF_get_ps_service(char *out);

/* Switches the modem to its firmware-download mode. Doesn't wait for a reply: 0 once the request is
 * queued, 1, 2 (it doesn't create the queue) or 3. Blocks while the queue is full. Records its
 * caller. */
int shared_CMIF_set_CM_qfirehose(void);

/* `uptime` receives the seconds since the connection was made. 0, or 5 for NULL, with a line. Reads
 * the store alone and doesn't block. */
int shared_CMIF_get_connection_uptime(unsigned int *uptime);

/* `enabled` receives 1 when the connection is to be started at boot, else 0. 0, or 5 for NULL.
 * Reads the store alone, doesn't block and prints nothing. */
int shared_CMIF_get_auto_connect_when_start_up(int *enabled);

/* Stores "on" for 1 and "off" for any other number, saves the store and prints a line, which has
 * "on" for any number except 0. Asks no daemon. Always 0. */
int shared_CMIF_set_auto_connect_when_start_up(int enabled);

/* ------------------------------------------------------------------------------------------------
 * Debug log: "/data/debug_lte.txt" and two older generations
 *
 * Call init once in each process before any write, and write nothing after deinit; neither may run
 * at the same time as another call. Between them any thread may write. Several processes may share
 * the file. QMI calls write here too.
 * ---------------------------------------------------------------------------------------------- */

/* Reads "debug_lte_enable", which turns the log on unless it is 0, and prepares the log. Prints a
 * line. 0, or -1 when the semaphore can't be initialised. */
int shared_debug_lte_mutex_init(void);

/* Ends the log, with a line if it is on. Up to 128 bytes of text that is still pending are not
 * written. 0. */
int shared_debug_lte_mutex_deinit(void);

/* Appends one printf-like message, cut to 255 characters; adds nothing, not even a newline. Writes
 * to the file only when the buffer of 128 bytes is full, and waits while another thread writes.
 * Does nothing while the log is off. The result has no meaning. */
int shared_debug_lte_write_log_file(const char *format, ...) CMIF_PRINTF_LIKE;

/* Shifts the files by one generation and starts a new one with the date, by four shell commands,
 * each after a line that shows it. Works whether the log is on or off. Pending text goes to the new
 * file. Returns the last command's status as system() does. */
int shared_debug_lte_backup_log_file(void);

/* ------------------------------------------------------------------------------------------------
 * For authors of daemons: queues, records, marker files
 *
 * System V message queues, mode 0666. The type of a record is the platform's long. Sizes passed to
 * msgsnd and msgrcv count the payload alone, whose layout is the same on 32 and 64 bits.
 *
 * A reply to an AT request has exactly 116 bytes of payload: a longer one is never received, and
 * its caller repeats the receive forever; of a shorter one the missing bytes keep what the request
 * had there, 0 for ret_code. A reply to a QMI request has at most 316; a longer one fails the
 * receive.
 * ---------------------------------------------------------------------------------------------- */

#define CMIF_AT_REQUEST_KEY     899
#define CMIF_AT_REPLY_KEY       900
#define CMIF_QMI_REQUEST_KEY    1158
#define CMIF_QMI_REPLY_KEY      1159
#define CMIF_AT_PAYLOAD         116
#define CMIF_QMI_PAYLOAD        312

#define CMIF_PROVIDER_LIST_FILE "/tmp/lte_provider_list"
#define CMIF_QMI_READY_FILE     "/tmp/lte_qmi_msg_handler_thread_ready" /* "on" when ready */
#define CMIF_PROFILE_BUSY_FILE  "/tmp/modify_profile_in_progress"
#define CMIF_LOG_FILE           "/data/debug_lte.txt"
#define CMIF_LOG_FILE_1         "/data/debug_lte_1.txt" /* the previous generation */
#define CMIF_LOG_FILE_2         "/data/debug_lte_2.txt" /* the oldest */

/* Request codes of the AT channel. 5 is not used. */
enum cmif_at_code {
    CMIF_AT_SET_TIME_ZONE = 1,
    CMIF_AT_SET_SEARCH_MODE = 2, /* the band region too: the daemon sees the value alone */
    CMIF_AT_SELECT_AUTOMATICALLY = 3,
    CMIF_AT_GET_PIN_COUNTERS = 4,
    CMIF_AT_GET_PACKET_DOMAIN = 6,
    CMIF_AT_SET_PACKET_DOMAIN = 7,
    CMIF_AT_GET_PIN_MODE = 8,
    CMIF_AT_SET_PIN_MODE = 9,
    CMIF_AT_LOCK_NETWORK = 10,
    CMIF_AT_UNLOCK_NETWORK = 11,
    CMIF_AT_ENTER_PIN = 12,
    CMIF_AT_CHANGE_PIN = 13,
    CMIF_AT_ENTER_PUK = 14,
    CMIF_AT_SET_ROAMING = 15,
    CMIF_AT_SET_OPERATOR_FORMAT = 16,
    CMIF_AT_SELECT_OPERATOR = 17,
    CMIF_AT_LIST_MESSAGES = 18,
    CMIF_AT_DELETE_MESSAGES = 19,
    CMIF_AT_DOWNLOAD_MODE = 20, /* never answered */
    CMIF_AT_FACTORY_RESET = 21,
    CMIF_AT_SET_FUNCTIONALITY = 22,
    CMIF_AT_GET_SEARCH_STATE = 23,
    CMIF_AT_SEARCH = 24,
    CMIF_AT_SET_PROFILE = 25,
    CMIF_AT_START_DEVICE_MANAGEMENT = 26,
    CMIF_AT_SYNCHRONIZE_PROFILE = 27
};

/* Request codes of the QMI channel. 2 and 7 are not used. */
enum cmif_qmi_code {
    CMIF_QMI_GET_DEVICE_REVISION = 1,
    CMIF_QMI_MODIFY_PROFILE = 3,
    CMIF_QMI_START = 4,
    CMIF_QMI_STOP = 5,
    CMIF_QMI_GET_SIM_STATUS = 6,
    CMIF_QMI_GET_PACKET_SERVICE = 8,
    CMIF_QMI_DOWNLOAD_MODE = 9 /* never answered */
};

/* A request to the AT daemon, and its reply, of which only the type and ret_code count. */
struct cmif_msg {
    long mod_id; /* request code; the reply carries the same */
    char set_string[30];
    char set_string2[30];
    char set_string3[30];
    char set_value[22];
    int ret_code;
};

/* A request to the QMI daemon, and its reply, which begins with a text or a 32-bit integer. */
struct qmi_msg {
    long mtype; /* request code; the reply carries the same */
    char payload[CMIF_QMI_PAYLOAD];
};

/* The payload of a profile modification: texts with their NULs, and numbers as single digits. */
struct qmi_profile_payload {
    char apn[41];
    char user[129];
    char password[129];
    char auth[4];
    char pdp[4];
    char curIpFamily[4];
    char unused;
};

#ifdef __cplusplus
}
#endif

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#endif
