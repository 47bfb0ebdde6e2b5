#version 330

uniform mat4 world;
uniform mat4 normal_matrix;
uniform mat4 world_view_proj;
uniform vec2 texture_offset;
uniform float tile_count;
uniform float tile_count_metallic;
uniform float tile_count_normal;
uniform float tile_count_roughness;

in vec4 vertex;
in vec3 normal;
in vec2 uv0;

out vec3 surface_position;
out vec3 surface_normal;
out vec2 uv_diffuse;
out vec2 uv_normal;
out vec2 uv_roughness;
out vec2 uv_metallic;

void main()
{
	gl_Position = world_view_proj * vertex;
	surface_position = (world * vertex).xyz;
	surface_normal = mat3(normal_matrix) * normal;
	vec2 uv = uv0 + texture_offset;
	uv_diffuse = uv * tile_count;
	uv_normal = uv * tile_count_normal;
	uv_roughness = uv * tile_count_roughness;
	uv_metallic = uv * tile_count_metallic;
}
