-- Wireshark dissector for the link between the Quirel console and an access terminal.
--
--   wireshark -X lua_script:tools/quirel.lua
--   tshark -X lua_script:tools/quirel.lua -o quirel.port:20086 -r session.pcapng
--
-- or put this file into the personal plugins folder (Help > About Wireshark > Folders). The
-- terminal's port is a preference of the protocol; "Decode As" works as well. Packets to that port
-- are requests, packets from it are replies. A reply does not name its request, so each reply is
-- matched to the oldest unanswered request of its connection; start the capture before the console
-- connects. A request counts as unanswered for good when the next request is sent after its
-- timeout, or when its connection is opened again. A reply that starts later is matched to the next
-- request.
--
-- A new command needs a row in `commands`, and an item for each new kind of payload.

local quirel = Proto("quirel", "Quirel")
quirel.prefs.port = Pref.uint("Terminal's TCP port", 20086, "Where the terminal listens")

local MAGIC = 0xEAC5
local HEAD_SIZE = 5 -- magic (2 bytes), number of bytes behind the head (3 bytes)
local RECORD_SIZE = 100
local FRAME_SIZE = 540 * 720
local FEATURES_SIZE = 10240
local WAIT = 0.9 -- seconds; the console's timeout is about 1 s
local LIST_WAIT = 1.9 -- seconds; the timeout for the QR codes is about 2 s

-- Fields -----------------------------------------------------------------------------------------

local fields = {}

local function field(kind, name, label, ...)
    local new = ProtoField[kind]("quirel." .. name, label, ...)
    fields[#fields + 1] = new
    return new
end

local f = {
    magic = field("uint16", "magic", "Magic", base.HEX),
    length = field("uint24", "length", "Bytes behind the head"),
    command = field("uint8", "command", "Command", base.HEX),
    status = field("uint8", "status", "Status"),
    name = field("string", "name", "Command name"),
    request = field("bool", "request", "Request"),
    record = field("none", "record", "Record"),
    answers = field("framenum", "reply_to", "Reply to request in frame", base.NONE,
        frametype.REQUEST),
    answered = field("framenum", "answered_in", "Answered in frame", base.NONE,
        frametype.RESPONSE),
    time = field("relative_time", "time", "Time since request"),
}

local experts = {}

local function expert_info(name, label, group, severity)
    local new = ProtoExpert.new("quirel." .. name, label, expert.group[group],
        expert.severity[severity])
    experts[#experts + 1] = new
    return new
end

local ei = {
    stray = expert_info("not_a_packet", "Not a packet", "PROTOCOL", "WARN"),
    unasked = expert_info("reply_without_request", "Reply without request", "SEQUENCE", "WARN"),
    overtaking = expert_info("earlier_unanswered", "Earlier unanswered", "SEQUENCE", "NOTE"),
    lost = expert_info("never_answered", "Never answered", "SEQUENCE", "NOTE"),
    unknown = expert_info("unknown_command", "Unknown command", "UNDECODED", "NOTE"),
    short = expert_info("too_short", "Too short", "PROTOCOL", "WARN"),
    long = expert_info("too_long", "Too long", "PROTOCOL", "WARN"),
    count = expert_info("wrong_count", "Wrong count", "PROTOCOL", "WARN"),
}

-- Items: the parts of payloads. An item has a label, a width in bytes (nil: all remaining bytes) and
-- a function that shows a range of that width, which is never empty. -------------------------------

local function item(width, label, show)
    return { width = width, label = label, show = show }
end

local function plain(kind, width, name, label, ...)
    local shown = field(kind, name, label, ...)
    return item(width, label, function(tree, range) tree:add(shown, range) end)
end

local function number(width, name, label, ...)
    return plain("uint" .. width * 8, width, name, label, ...)
end

-- An item whose value is the result of `read`.
local function value(kind, width, name, label, read)
    local shown = field(kind, name, label)
    return item(width, label, function(tree, range) tree:add(shown, range, read(range)) end)
end

-- An item that shows only its size.
local function block(width, name, label)
    local shown = field("uint32", name, label, base.UNIT_STRING, { " byte", " bytes" })
    return item(width, label, function(tree, range) tree:add(shown, range, range:len()) end)
end

local function padded_text(range)
    return (range:string(ENC_UTF_8):gsub("%z.*", ""))
end

local function text(width, name, label)
    return value("string", width, name, label, padded_text)
end

-- Formats a date; the bytes from `at` on are month, day, hour, minute and second.
local function date_text(range, year, at)
    local bytes = range:bytes()
    return ("%04d-%02d-%02d %02d:%02d:%02d"):format(year, bytes:get_index(at),
        bytes:get_index(at + 1), bytes:get_index(at + 2), bytes:get_index(at + 3),
        bytes:get_index(at + 4))
end

local function clock_text(range)
    return date_text(range, 1970 + range(0, 1):uint(), 1)
end

local function qr_time_text(range)
    return date_text(range, range(0, 1):uint() * 100 + range(1, 1):uint(), 2)
end

local json_known, json_dissector = pcall(Dissector.get, "json")
local json_text = field("string", "json", "JSON text")

local json = item(nil, "JSON text", function(tree, range, pinfo)
    tree:add(json_text, range, range:string(ENC_UTF_8))
    if json_known then
        json_dissector:call(range:tvb(), pinfo, tree)
    end
end)

local mode = number(1, "mode", "Mode", base.DEC, {
    [0] = "idle",
    [1] = "local enrollment",
    [3] = "local recognition",
    [4] = "remote recognition",
    [6] = "remote enrollment",
})
local distance = number(2, "distance", "Distance")
local clock = value("string", 6, "clock", "Clock", clock_text)
local bias = value("int32", 2, "tof_bias", "TOF bias", function(range)
    return range:uint() - 1000
end)
local user_id = number(4, "user_id", "User ID")
local card = number(4, "card", "Card number")
local user_name = text(32, "user_name", "User name")
local department = text(32, "department", "Department")
local kind = number(1, "kind", "Kind")
local image_index = number(1, "image_index", "Image index")
local year = number(2, "year", "Year")
local month = number(1, "month", "Month")
local start_index = number(4, "start_index", "Start index")
local address = plain("ipv4", 4, "debug_address", "Debug address")
local port = number(2, "debug_port", "Debug port")
local serial_number = text(16, "serial_number", "Serial number")
local remark = text(32, "qr_remark", "Remark")
local start_time = value("string", 7, "qr_start", "Start time", qr_time_text)
local end_time = value("string", 7, "qr_end", "End time", qr_time_text)
local qr_data = text(512, "qr_data", "QR data")
local selector = number(1, "selector", "Selector", base.DEC, { [1] = "by remark", [2] = "by data" })
local key = text(32, "key", "Key")
local palmprint = block(FRAME_SIZE, "palmprint_image", "Palmprint image")
local vein = block(FRAME_SIZE, "vein_image", "Palm-vein image")
local first_image = block(FRAME_SIZE, "first_image", "First image")
local second_image = block(FRAME_SIZE, "second_image", "Second image")
local features = block(FEATURES_SIZE, "features", "Feature block")
local feature_file = block(nil, "feature_file", "Feature file")

local record_type = number(1, "record.type", "Type", base.DEC, { [0] = "Palm", [1] = "Card" })
local record_texts = {} -- { offset, item }; bytes 1 to 3 are reserved
for i, place in ipairs({ { 4, 16 }, { 20, 16 }, { 36, 32 }, { 68, 32 } }) do
    record_texts[i] = { place[1], text(place[2], "record.text" .. i, "Text " .. i) }
end

local function show_record(tree, range)
    record_type.show(tree, range(0, 1))
    for _, entry in ipairs(record_texts) do
        entry[2].show(tree, range(entry[1], entry[2].width))
    end
end

local count_field = field("uint16", "record_count", "Record count")

local records = item(nil, "Record count", function(tree, range)
    if range:len() < 2 then
        tree:add_proto_expert_info(ei.short, "Record count takes 2 bytes, 1 is left")
        return
    end
    local declared = range(0, 2):uint()
    tree:add(count_field, range(0, 2))
    local present = math.floor((range:len() - 2) / RECORD_SIZE)
    for i = 0, present - 1 do
        local entry = range(2 + i * RECORD_SIZE, RECORD_SIZE)
        show_record(tree:add(f.record, entry):append_text((" %d"):format(i)), entry)
    end
    if range:len() ~= 2 + declared * RECORD_SIZE then
        tree:add_proto_expert_info(ei.count, ("%d records are counted, %d bytes of records came")
            :format(declared, range:len() - 2))
    end
end)

quirel.fields, quirel.experts = fields, experts

-- Commands: name, items of the request, items of the reply behind its status byte (`reply`) or
-- without a status byte (`plain`), meanings of the error statuses (others are unknown errors), and
-- the timeout (`wait`) where it is not WAIT. -------------------------------------------------------

local BUSY, PARAMETER = "busy", "wrong parameter"
local NO_USER, USERS_FULL = "user ID does not exist", "user database full"
local user_statuses = { [1] = BUSY, [2] = PARAMETER, [21] = NO_USER }
local qr_statuses = { [2] = PARAMETER, [32] = "QR code does not exist" }

local set_mode = { name = "setMode", request = { mode } }
local enroll_by_mode = {
    [1] = { name = "startEnroll", request = { mode, user_id }, statuses = {
        [1] = BUSY, [2] = PARAMETER, [21] = NO_USER, [24] = "feature buffer full" } },
    [6] = { name = "startRemoteEnroll", request = { mode, user_id }, statuses = {
        [1] = BUSY, [2] = PARAMETER } },
}
local delete_qr = { name = "deleteQrCode", request = { selector, key }, statuses = qr_statuses }
local delete_qr_by = {
    [1] = { name = "deleteQrCodeByRemark", request = { selector, key }, statuses = qr_statuses },
    [2] = { name = "deleteQrCodeByData", request = { selector, key }, statuses = qr_statuses },
}

-- A function selects one of several commands with the same code by the payload's length and first
-- byte.
local commands = {
    [0x00] = { name = "getTofDistance", plain = { distance } },
    [0x01] = { name = "getPalmprintImage", plain = { palmprint } },
    [0x02] = { name = "getPalmVeinImage", plain = { vein } },
    [0x03] = { name = "getDualImages", plain = { palmprint, vein } },
    [0x04] = function(length, first) return length > 1 and enroll_by_mode[first] or set_mode end,
    [0x05] = { name = "getMode", plain = { mode } },
    [0x06] = { name = "getRtcTime", plain = { clock } },
    [0x07] = { name = "setRtcTime", request = { clock } },
    [0x08] = { name = "setDebugAddress", request = { address, port } },
    [0x0A] = { name = "setTofBias", request = { bias } },
    [0x0B] = { name = "getTofBias", plain = { bias } },
    [0x0E] = { name = "clearUsers" },
    [0x10] = { name = "getUserList", reply = { json } },
    [0x15] = { name = "setUserConfig", request = { json } },
    [0x16] = { name = "getUserConfig", reply = { json } },
    [0x17] = { name = "getSystemInfo", reply = { json } },
    [0x18] = { name = "getVendorConfig", reply = { json } },
    [0x19] = { name = "setVendorConfig", request = { json } },
    [0x1A] = { name = "getOutputConfig", reply = { json } },
    [0x1B] = { name = "setOutputConfig", request = { json } },
    [0x27] = { name = "getRemoteEnrollImages", request = { user_id, image_index },
        reply = { first_image, second_image }, statuses = { [2] = PARAMETER } },
    [0x28] = { name = "getRemoteFeatures", request = { user_id }, reply = { features },
        statuses = { [2] = PARAMETER } },
    [0x2A] = { name = "importUserFeatures", request = { kind, user_id, feature_file }, statuses = {
        [1] = BUSY, [2] = PARAMETER, [21] = NO_USER, [22] = "feature buffer full" } },
    [0x30] = { name = "addUser", request = { user_id, card, user_name, department }, statuses = {
        [1] = BUSY, [20] = "user ID exists", [22] = USERS_FULL } },
    [0x31] = { name = "deleteUser", request = { user_id }, statuses = user_statuses },
    [0x33] = { name = "getEmptyUserId", reply = { user_id }, statuses = {
        [1] = BUSY, [22] = USERS_FULL } },
    [0x34] = { name = "deleteUserFeatures", request = { user_id }, statuses = user_statuses },
    [0x40] = { name = "getRecordFileList", reply = { json } },
    [0x41] = { name = "deleteMonthRecords", request = { year, month } },
    [0x42] = { name = "clearRecords" },
    [0x43] = { name = "getMonthRecords", request = { year, month, start_index },
        reply = { records } },
    [0x50] = { name = "setSerialNumber", request = { serial_number } },
    [0x60] = { name = "addQrCode", request = { remark, start_time, end_time, qr_data }, statuses = {
        [2] = PARAMETER, [30] = "QR code database full", [31] = "duplicate QR code data" } },
    [0x61] = { name = "clearQrCodes" },
    [0x62] = function(_, first) return delete_qr_by[first] or delete_qr end,
    [0x63] = { name = "getQrCodeList", reply = { json }, wait = LIST_WAIT },
    [0xEF] = { name = "rebootDevice" },
}

local function find_command(packet)
    local code = packet(HEAD_SIZE, 1):uint()
    local found = commands[code]
    if type(found) == "function" then
        local payload = packet:len() - HEAD_SIZE - 1
        found = found(payload, payload > 0 and packet(HEAD_SIZE + 1, 1):uint() or nil)
    end
    return found or { name = ("unknown command 0x%02x"):format(code), unknown = true }
end

local function status_meaning(command, status)
    return status == 0 and "success" or (command.statuses or {})[status] or "unknown error"
end

-- Exchanges: a request and its reply. They are matched in the first pass, when frames are dissected
-- in order, and stored by frame number for later passes. Connections are identified by their
-- addresses and ports, because TCP's stream index is not available in every pass. ------------------

local unanswered -- connection -> queue of exchanges without a reply, oldest first
local remembered -- frame number -> packet's offset -> exchange; false: none

function quirel.init()
    unanswered, remembered = {}, {}
end

local function connection_of(pinfo, is_request)
    local from = tostring(pinfo.src) .. " " .. pinfo.src_port
    local to = tostring(pinfo.dst) .. " " .. pinfo.dst_port
    return is_request and from .. " " .. to or to .. " " .. from
end

local function queue_of_connection(pinfo, is_request)
    local connection = connection_of(pinfo, is_request)
    unanswered[connection] = unanswered[connection] or { first = 1, last = 0 }
    return unanswered[connection]
end

local function oldest(queue)
    return queue[queue.first]
end

-- Takes constant time; table.remove would be slow with thousands of unanswered requests.
local function take_oldest(queue)
    local exchange = oldest(queue)
    if exchange then
        queue[queue.first] = nil
        queue.first = queue.first + 1
    end
    return exchange
end

local function add_newest(queue, exchange)
    queue.last = queue.last + 1
    queue[queue.last] = exchange
end

-- A request whose reply has started never times out.
local function is_given_up(exchange, now)
    return not exchange.being_answered and now - exchange.since > (exchange.command.wait or WAIT)
end

local function begin_exchange(pinfo, packet)
    local queue = queue_of_connection(pinfo, true)
    local exchange = { command = packet:len() > HEAD_SIZE and find_command(packet)
        or { name = "request without command" }, asked = pinfo.number, since = pinfo.rel_ts,
        overtakes = oldest(queue) and oldest(queue).asked }
    while oldest(queue) and is_given_up(oldest(queue), pinfo.rel_ts) do
        take_oldest(queue).dropped = pinfo.number
    end
    add_newest(queue, exchange)
    return exchange
end

-- Marks the oldest exchange when the first bytes of its reply arrive.
local function note_answering(pinfo)
    local exchange = oldest(queue_of_connection(pinfo, false))
    if exchange and not pinfo.visited then
        exchange.being_answered = true
    end
end

local function end_exchange(pinfo)
    local exchange = take_oldest(queue_of_connection(pinfo, false))
    if exchange then
        exchange.answered, exchange.took = pinfo.number, pinfo.rel_ts - exchange.since
    end
    return exchange or false
end

-- Packets of one frame are distinguished by their offsets; reassembled data starts at 0.
local function exchange_of(pinfo, packet, is_request)
    local known = remembered[pinfo.number] or {}
    remembered[pinfo.number] = known
    local place = packet:offset()
    if not pinfo.visited and known[place] == nil then
        known[place] = is_request and begin_exchange(pinfo, packet) or end_exchange(pinfo)
    end
    return known[place] or nil
end

-- Discards the unanswered requests of a connection that is opened again. Segments without data are
-- not passed to the dissector above, so this one is called for every frame, and finds the TCP header
-- by its ports.

local openings = Proto("quirel_openings", "Quirel connection openings")

local function is_opening(frame, pinfo)
    local ports = Struct.pack(">I2I2", pinfo.src_port, pinfo.dst_port)
    local bytes = frame:raw()
    local at = bytes:find(ports, 1, true)
    local flags = at and bytes:byte(at + 13)
    return flags and flags % 4 == 2 and math.floor(flags / 16) % 2 == 0 -- SYN; no FIN, no ACK
end

function openings.dissector(frame, pinfo)
    local queue = not pinfo.visited and next(unanswered) and unanswered[connection_of(pinfo, true)]
    if queue and oldest(queue) and is_opening(frame, pinfo) then
        while oldest(queue) do
            take_oldest(queue).dropped = pinfo.number
        end
    end
    return 0
end

register_postdissector(openings)

-- Showing ----------------------------------------------------------------------------------------

local function bytes_text(count)
    return count == 1 and "1 byte" or ("%d bytes"):format(count)
end

-- Sets the Info column: all packets of the frame, including those of an earlier call. Texts of the
-- dissectors called from here are dropped.
local function set_info(pinfo, texts, is_continued)
    pinfo.cols.protocol = "Quirel"
    pinfo.cols.info = (is_continued and "; " or "") .. table.concat(texts, "; ")
end

local function show_items(items, packet, at, pinfo, tree)
    for _, entry in ipairs(items or {}) do
        local left = packet:len() - at
        local width = entry.width or left
        if width > left then
            tree:add_proto_expert_info(ei.short, ("%s takes %s, %d left"):format(entry.label,
                bytes_text(width), left))
            return
        end
        if width > 0 then
            entry.show(tree, packet(at, width), pinfo)
        end
        at = at + width
    end
    if at < packet:len() then
        tree:add_proto_expert_info(ei.long, ("%s left over"):format(bytes_text(packet:len() - at)))
    end
end

local function show_name(tree, exchange, is_request)
    tree:append_text((", %s%s"):format(exchange.command.name, is_request and "" or " reply"))
    tree:add(f.name, exchange.command.name):set_generated()
end

local function show_request(packet, pinfo, tree, exchange)
    local command = exchange.command
    show_name(tree, exchange, true)
    if exchange.answered then
        tree:add(f.answered, exchange.answered):set_generated()
    end
    if exchange.overtakes then
        tree:add_proto_expert_info(ei.overtaking,
            ("The request in frame %d has no reply yet"):format(exchange.overtakes))
    end
    if exchange.dropped then
        tree:add_proto_expert_info(ei.lost, ("No reply before frame %d"):format(exchange.dropped))
    end
    if packet:len() == HEAD_SIZE then
        tree:add_proto_expert_info(ei.short, "No command")
        return command.name
    end
    tree:add(f.command, packet(HEAD_SIZE, 1)):append_text((" (%s)"):format(command.name))
    if command.unknown then
        tree:add_proto_expert_info(ei.unknown)
    else
        show_items(command.request, packet, HEAD_SIZE + 1, pinfo, tree)
    end
    return command.name
end

local function show_reply(packet, pinfo, tree, exchange)
    local command = exchange.command
    local size = packet(2, 3):uint()
    show_name(tree, exchange, false)
    tree:add(f.answers, exchange.asked):set_generated()
    local nanoseconds = math.floor(exchange.took * 1e9 + 0.5)
    tree:add(f.time, NSTime(math.floor(nanoseconds / 1e9), nanoseconds % 1e9)):set_generated()
    if command.plain then
        show_items(command.plain, packet, HEAD_SIZE, pinfo, tree)
        return ("%s reply, %s"):format(command.name, bytes_text(size))
    end
    if packet:len() == HEAD_SIZE then
        tree:add_proto_expert_info(ei.short, "No status")
        return command.name .. " reply, no status"
    end
    local status = packet(HEAD_SIZE, 1):uint()
    local meaning = status_meaning(command, status)
    tree:add(f.status, packet(HEAD_SIZE, 1)):append_text((" (%s)"):format(meaning))
    show_items(status == 0 and command.reply or nil, packet, HEAD_SIZE + 1, pinfo, tree)
    return ("%s reply, status %d (%s)%s"):format(command.name, status, meaning,
        size > 1 and ", " .. bytes_text(size - 1) or "")
end

-- Shows a packet, or its captured part. Returns the text for the Info column.
local function show_packet(packet, pinfo, root, is_request)
    local tree = root:add(quirel, packet())
    if packet:len() < HEAD_SIZE then
        tree:add_proto_expert_info(ei.short, "The head is not captured whole")
        return "incomplete packet"
    end
    local declared = packet(2, 3):uint()
    tree:add(f.magic, packet(0, 2))
    tree:add(f.length, packet(2, 3))
    tree:add(f.request, is_request):set_generated()
    local exchange = exchange_of(pinfo, packet, is_request)
    if not exchange then
        tree:add_proto_expert_info(ei.unasked)
        return ("reply without request, %s"):format(bytes_text(declared))
    end
    if packet:len() < HEAD_SIZE + declared then
        tree:add_proto_expert_info(ei.short, ("%s declared, %d captured"):format(
            bytes_text(declared), packet:len() - HEAD_SIZE))
    end
    return (is_request and show_request or show_reply)(packet, pinfo, tree, exchange)
end

local function show_stray(range, root)
    root:add(quirel, range):add_proto_expert_info(ei.stray)
    return ("no packet, %s"):format(bytes_text(range:len()))
end

-- Returns whether the bytes at `at`, as far as they have arrived, differ from the magic.
local function starts_wrong(tvb, at)
    local there = math.min(2, tvb:len() - at)
    return tvb(at, there):uint() ~= math.floor(MAGIC / 256 ^ (2 - there))
end

-- Dissects the complete packets and requests the rest of an incomplete one.
function quirel.dissector(tvb, pinfo, root)
    local is_request = pinfo.dst_port == pinfo.match_uint
    local is_continued = tostring(pinfo.cols.protocol) == "Quirel"
    local texts, at = {}, 0
    while at < tvb:len() do
        local there = tvb:len() - at
        if starts_wrong(tvb, at) then
            texts[#texts + 1] = show_stray(tvb(at), root)
            break
        end
        local size = there >= HEAD_SIZE and HEAD_SIZE + tvb(at + 2, 3):uint() or nil
        if not (size and size <= there) and pinfo.can_desegment > 0 then
            if not is_request then
                note_answering(pinfo)
            end
            pinfo.desegment_offset = at
            pinfo.desegment_len = size and size - there or DESEGMENT_ONE_MORE_SEGMENT
            break
        end
        local packet = tvb(at, math.min(size or there, there)):tvb()
        texts[#texts + 1] = show_packet(packet, pinfo, root, is_request)
        at = at + (size or there)
    end
    if #texts > 0 then
        set_info(pinfo, texts, is_continued)
    end
    return tvb:len()
end

-- Ports ------------------------------------------------------------------------------------------

local tcp_ports = DissectorTable.get("tcp.port")
local served = quirel.prefs.port
tcp_ports:add(served, quirel)

function quirel.prefs_changed()
    if quirel.prefs.port ~= served then
        tcp_ports:remove(served, quirel)
        served = quirel.prefs.port
        tcp_ports:add(served, quirel)
    end
end
