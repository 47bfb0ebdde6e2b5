#version 330
#include <viewer_lights.glsl>

uniform sampler2D diffuse_map;
uniform sampler2D normal_map;
uniform sampler2D roughness_map;
uniform sampler2D metallic_map;
uniform samplerCube reflection_map;
uniform sampler2D light_map;
uniform sampler2D ambientocclusion_map;
uniform float refl_blur_bias;
uniform float reflection_power;
uniform float roughness_bias;
uniform float spec_multiplier;
uniform vec2 surface_reflectivity;
uniform vec3 eye;

in vec3 surface_position;
in vec3 surface_normal;
in vec2 uv_diffuse;
in vec2 uv_normal;
in vec2 uv_roughness;
in vec2 uv_metallic;

out vec4 colour;

// Meshes have no tangents: the frame of the normal map comes from how place and texture coordinates change together.
vec3 bumped(vec3 normal)
{
	vec3 along_x = dFdx(surface_position);
	vec3 along_y = dFdy(surface_position);
	vec2 uv_x = dFdx(uv_normal);
	vec2 uv_y = dFdy(uv_normal);
	vec3 tangent = along_x * uv_y.y - along_y * uv_x.y;
	tangent -= normal * dot(normal, tangent);
	if (!(dot(tangent, tangent) > 1e-20))
		return normal;
	tangent = normalize(tangent);
	vec3 texel = texture(normal_map, uv_normal).xyz * (255.0 / 127.0) - 1.0;
	return normalize(texel.x * tangent + texel.y * cross(normal, tangent) + texel.z * normal);
}

// How much light a rough, mirroring surface sends from `light` to `view`: microfacets after Trowbridge and Reitz.
vec3 shine(vec3 normal, vec3 view, vec3 light, float roughness, vec3 reflectance)
{
	vec3 half_way = normalize(light + view);
	float n_h = max(dot(normal, half_way), 0.0);
	float n_l = max(dot(normal, light), 0.0);
	float n_v = max(dot(normal, view), 1e-3);
	float a = roughness * roughness;
	float spread = n_h * n_h * (a * a - 1.0) + 1.0;
	float facets = a * a / (PI * spread * spread);
	float k = (roughness + 1.0) * (roughness + 1.0) / 8.0;
	float shadowing = 1.0 / (4.0 * (n_l * (1.0 - k) + k) * (n_v * (1.0 - k) + k));
	vec3 fresnel = reflectance + (1.0 - reflectance) * pow(1.0 - max(dot(half_way, view), 0.0), 5.0);
	return facets * shadowing * fresnel;
}

void main()
{
	vec4 base = texture(diffuse_map, uv_diffuse);
	vec3 albedo = to_linear(base.rgb);
	float roughness = clamp(texture(roughness_map, uv_roughness).r + roughness_bias, 0.06, 1.0);
	float metal = clamp(texture(metallic_map, uv_metallic).r, 0.0, 1.0);
	float open = texture(ambientocclusion_map, uv_diffuse).r;
	vec3 reflectance = mix(vec3(0.04), albedo, metal);

	vec3 view = normalize(eye - surface_position);
	vec3 normal = normalize(surface_normal);
	if (!gl_FrontFacing && dot(normal, view) < 0.0)
		normal = -normal;
	normal = bumped(normal);

	vec3 sum = ambient_light(normal) * albedo * open * (1.0 - 0.6 * metal) * texture(light_map, uv_diffuse).rgb;
	for (int i = 0; i < LIGHTS; ++i) {
		vec4 light = towards_light(i, surface_position);
		float arriving = max(dot(normal, light.xyz), 0.0) * light.w;
		vec3 matt = (1.0 - metal) * albedo;
		vec3 glossy = shine(normal, view, light.xyz, roughness, reflectance) * spec_multiplier;
		sum += (matt + glossy) * to_linear(light_colour[i].rgb) * arriving;
	}

	vec3 mirrored = reflect(-view, normal);
	mirrored.z = -mirrored.z;  // faces of cube maps are seen from inside, left-handed
	vec3 surroundings = to_linear(textureLod(reflection_map, mirrored, roughness * 6.0 + refl_blur_bias).rgb);
	float grazing = pow(1.0 - max(dot(normal, view), 0.0), 5.0);
	vec3 fresnel = reflectance + (max(vec3(1.0 - roughness), reflectance) - reflectance) * grazing;
	float strength = mix(reflection_power, 1.0, metal) * surface_reflectivity.x;
	sum += surroundings * fresnel * open * strength;

	colour = vec4(to_screen(sum), base.a);
}
