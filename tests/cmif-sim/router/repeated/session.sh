# What a person does beside scenario.cmif, on both channels. The search is made in the background:
# time goes on once the daemon has begun it, which the end of the step that waits for it shows
# without a request.
cmif-sim ctl advance 3s
printf '0000\n' | cmifctl sim enter-pin -
printf '1234\n' | cmifctl sim enter-pin -
cmif-sim ctl advance 10s
cmifctl network scan >scan 2>&1 &
scan=$!
while cmif-sim status | grep -q 'when searching'; do sleep 0.02; done
cmif-sim ctl advance 30s
wait "$scan"
cat scan
cmifctl sms list
cmifctl network select 00102 --no-wait
printf 'secret\n' | cmifctl data profile set --apn internet.example --user me --password -
cmif-sim ctl sim remove
cmifctl sim status
cmifctl config list
cmif-sim ctl state registered
cmif-sim ctl advance 40s
cmifctl data start --no-wait
cmif-sim ctl advance 20s
cmifctl config list
