-- Presets in files, which the host lists by name: loads each and compares the values.
-- Arguments: FOLDER TRACK FILE        FILE has lines of name, title and value from 0 to 1, with tabs
dofile(debug.getinfo(1, "S").source:match("^@(.*/)") .. "common.lua")

local folder, track, file = arg[1], arg[2], arg[3]
AudioEngine:set_backend("None (Dummy)", "Unit-Test", "")
local session = load_session(folder, folder:match("[^/]+$"))
assert(session, "no session")
local insert, processor = insert_of(session, track)
local plugin = insert:plugin(0)
local index_of = {}
for _, parameter in ipairs(parameters(insert)) do
    index_of[parameter.title] = parameter.index
end

local names, expected = {}, {}
for line in io.lines(file) do
    local name, title, value = line:match("^([^\t]+)\t([^\t]+)\t([^\t]+)$")
    if not expected[name] then
        names[#names + 1] = name
        expected[name] = {}
    end
    expected[name][title] = as_float(tonumber(value))
end

local listed, right = 0, 0
for _, name in ipairs(names) do
    local record = plugin:preset_by_label(name)
    if record and record.valid and plugin:load_preset(record) then
        listed = listed + 1
        sleep(0.1)
        local wrong = 0
        for title, value in pairs(expected[name]) do
            local now = ARDOUR.LuaAPI.get_processor_param(processor, index_of[title])
            if now ~= value then
                report("wrong", name, title, now, "instead of", value)
                wrong = wrong + 1
            end
        end
        right = right + (wrong == 0 and 1 or 0)
    end
end
report("listed", listed)
report("right", right)
report("done")
